#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "displaylist/displaylist.h"
#include "importers/loader.h"
#include "lumen/recorder.h"

/// A drawing that was read from a file, drawn in logical coordinates.
struct RecordedDrawing {
  explicit RecordedDrawing(const std::string& path, const importers::ReadOptions& options = {})
      : problem(importers::read_drawing(path, options, drawing)) {
    if (!problem.empty()) return;
    drawing.list->m_pRenderer = recorder;
    drawing.list->m_bWideDots = false;
    drawing.list->m_pRootGroup->draw_unclipped(*drawing.list);
  }

  /// The points of every call of an action, clipped or not, in order.
  [[nodiscard]] std::vector<std::vector<LM_DCI_Point>> points_of(const std::string& action) const {
    std::vector<std::vector<LM_DCI_Point>> all;
    for (const lumen::RecordedCall& call : recorder->calls()) {
      if (call.action.starts_with(action)) all.push_back(call.points);
    }
    return all;
  }

  /// The names of the actions in order, without whether they clip.
  [[nodiscard]] std::vector<std::string> actions() const {
    std::vector<std::string> all;
    for (const lumen::RecordedCall& call : recorder->calls()) {
      all.push_back(call.action.substr(0, call.action.find('_')));
    }
    return all;
  }

  importers::Drawing drawing;
  LM_Handle<lumen::Recorder> recorder = LM_Create<lumen::Recorder>();
  std::string problem;
};
