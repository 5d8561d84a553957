#pragma once

#include <functional>
#include <initializer_list>
#include <ostream>
#include <utility>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/search.h"

/// The four draw operations of a drawable.
enum class DrawSlot { unclipped, clipped, unclipped_selection, clipped_selection };

struct ProbeCall {
  int id;
  DrawSlot slot;

  friend bool operator==(const ProbeCall&, const ProbeCall&) = default;
};

inline std::ostream& operator<<(std::ostream& os, const ProbeCall& call) {
  static const char* const names[] = {"unclipped", "clipped", "unclipped_selection",
                                      "clipped_selection"};
  return os << call.id << ':' << names[static_cast<int>(call.slot)];
}

using ProbeCalls = std::vector<ProbeCall>;

/// One call of the same operation for each of the probes.
inline ProbeCalls calls_of(DrawSlot slot, std::initializer_list<int> ids) {
  ProbeCalls calls;
  for (const int id : ids) calls.push_back({id, slot});
  return calls;
}

class ProbeDrawable;

/// What the probes of a test report. It outlives them.
struct ProbeLog {
  ProbeCalls calls;
  int alive = 0;
  /// Called before a draw is written down.
  std::function<void(int id, DL::DisplayList& list)> on_draw;
  /// Answers a search in the place of the probe; without it nothing matches.
  std::function<bool(ProbeDrawable& probe, DL::Search& search)> on_search;

  ProbeCalls take() { return std::exchange(calls, {}); }
};

/// A client's drawable that writes down which of its draw operations is called.
class ProbeDrawable final : public DL::Drawable {
 public:
  ProbeDrawable(ProbeLog& log, int id, const DL::BoundsTemplate<long>& bounds)
      : Drawable(LM_RGB32{}), m_log(log), m_id(id), m_bounds(bounds) {
    ++m_log.alive;
  }
  ~ProbeDrawable() override { --m_log.alive; }

  [[nodiscard]] int id() const { return m_id; }
  [[nodiscard]] const DL::BoundsTemplate<long>& bounds() const { return m_bounds; }
  void move_to(const DL::BoundsTemplate<long>& bounds) { m_bounds = bounds; }

  void draw_unclipped(DL::DisplayList& list) override { note(DrawSlot::unclipped, list); }
  void draw_clipped(DL::DisplayList& list) override { note(DrawSlot::clipped, list); }
  void draw_unclipped_selection(DL::DisplayList& list) override {
    note(DrawSlot::unclipped_selection, list);
  }
  void draw_clipped_selection(DL::DisplayList& list) override {
    note(DrawSlot::clipped_selection, list);
  }
  void add_bounds(DL::BoundsTemplate<long>& bounds) const override { bounds.widen(m_bounds); }
  bool remove(DL::Search& search) override {
    return m_log.on_search && m_log.on_search(*this, search);
  }
  void* type() const override { return nullptr; }
  Drawable* clone() override { return new ProbeDrawable(m_log, m_id, m_bounds); }

 private:
  void note(DrawSlot slot, DL::DisplayList& list) {
    if (m_log.on_draw) m_log.on_draw(m_id, list);
    m_log.calls.push_back({m_id, slot});
  }

  ProbeLog& m_log;
  int m_id;
  DL::BoundsTemplate<long> m_bounds;
};
