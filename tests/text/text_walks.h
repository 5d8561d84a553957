#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "displaylist/text/text_iterator.h"
#include "tests/text/texts.h"

/// Walks over texts, gathered.
namespace text_walks {

using namespace texts;
using Segment = DL::VectorTemplate<long>;
using Segments = std::vector<Segment>;
using Start = DL::DrawableVectorIteratorText::Start;

/// The segment that is there and all that follow.
inline Segments walk(DL::DrawableVectorIterator& iterator) {
  Segments segments;
  if (!iterator.m_bDone) segments.push_back(iterator.m_vector);
  while (const Segment* segment = iterator.next()) {
    EXPECT_EQ(segment, &iterator.m_vector);
    EXPECT_FALSE(iterator.m_bDone);
    segments.push_back(*segment);
    if (segments.size() > 10'000) break;
  }
  EXPECT_TRUE(iterator.m_bDone);
  EXPECT_EQ(iterator.next(), nullptr) << "it stays at the end";
  EXPECT_TRUE(iterator.m_bDone);
  return segments;
}

inline Segments walk(DL::Drawable& text, bool flag) {
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(text.create_vector_iterator(flag));
  EXPECT_EQ(iterator->m_pDrawable, &text);
  return walk(*iterator);
}

/// The sides of a closed figure.
inline Segments around(const std::vector<LogicalPoint>& points) {
  Segments sides;
  for (std::size_t i = 0; i < points.size(); ++i) {
    sides.push_back({points[i], points[(i + 1) % points.size()]});
  }
  return sides;
}

inline Segments together(const std::vector<Segments>& parts) {
  Segments all;
  for (const Segments& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

inline LM_Contour_Set contours(const std::vector<std::vector<LM_Point>>& all) {
  const LM_Contour_Set set = LM_Create<LM_Contour_Set_Data>();
  for (const auto& points : all) {
    set->add_contour(points.data(), static_cast<std::int32_t>(points.size()));
  }
  return set;
}

inline const Segments kBoxSides = around({{10, 18}, {40, 18}, {40, 30}, {10, 30}});

struct TextWalk : testing::Test, FakeList {
  TextWalk() {
    renderer->corners = {{{10, 18, 0}, {40, 18, 0}, {40, 30, 0}, {10, 30, 0}}};
    renderer->widths = {1.0F, 2.0F};  // a third and all of the box
  }
  std::unique_ptr<DL::DLText> text_of(const std::wstring& string, Setting setting = {}) {
    setting.list = &list;
    return wide_text(string, setting);
  }
  Segments walk_from(DL::DLText& text, Start start) {
    DL::DrawableVectorIteratorText iterator(text, false, start);
    return walk(iterator);
  }
};

}  // namespace text_walks
