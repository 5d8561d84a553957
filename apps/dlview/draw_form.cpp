#include "apps/dlview/draw_form.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "displaylist/core/group.h"

namespace dlview {

namespace {

/// Half the picture's sides; the picture's middle is there, too.
struct Half {
  double width;
  double height;
};

LM_Point on_ellipse(const Half& half, double width, double height, double turn) {
  const double angle = turn * 2.0 * std::numbers::pi;
  return {static_cast<float>(half.width + width * std::sin(angle)),
          static_cast<float>(half.height - height * std::cos(angle)), 0.0F};
}

/// Corners enough for any picture to keep the edges close to the circle.
std::vector<LM_Point> circle(const Half& half) {
  const double radius = std::min(half.width, half.height);
  const int corners = std::max(64, static_cast<int>(radius / 8));
  std::vector<LM_Point> points;
  for (int i = 0; i < corners; ++i) {
    points.push_back(on_ellipse(half, radius, radius, static_cast<double>(i) / corners));
  }
  return points;
}

std::vector<LM_Point> star(const Half& half) {
  constexpr int corners = 24;
  std::vector<LM_Point> points;
  for (int i = 0; i < corners; ++i) {
    const double reach = i % 2 == 0 ? 1.0 : 0.82;
    points.push_back(on_ellipse(half, half.width * reach, half.height * reach,
                                static_cast<double>(i) / corners));
  }
  return points;
}

void draw_circled(DL::DisplayList& list, const Region& region) {
  const DL::Group& root = *list.m_pRootGroup;
  region.is_part ? root.draw_circled_bounded(list, region.inner, region.outer)
                 : root.draw_circled(list);
}

void draw_complex(DL::DisplayList& list, const Region& region) {
  const DL::Group& root = *list.m_pRootGroup;
  region.is_part ? root.draw_complex_bounded(list, region.inner, region.outer)
                 : root.draw_complex(list);
}

}  // namespace

LM_Contour_Set clip_of(DrawForm form, const PictureSize& size) {
  if (form == DrawForm::unclipped || form == DrawForm::bounded) return nullptr;
  const Half half{(size.width - 1) / 2.0, (size.height - 1) / 2.0};
  const std::vector<LM_Point> points = form == DrawForm::circled ? circle(half) : star(half);
  LM_Contour_Set clip = LM_Create<LM_Contour_Set_Data>();
  clip->add_contour(points.data(), static_cast<std::int32_t>(points.size()));
  return clip;
}

void draw(DL::DisplayList& list, DrawForm form, const Region& region) {
  const DL::Group& root = *list.m_pRootGroup;
  switch (form) {
    case DrawForm::unclipped:
      return root.draw_unclipped(list);
    case DrawForm::bounded:
      return root.draw_bounded(list, region.inner, region.outer);
    case DrawForm::circled:
      // The circle that groups are tested against is taken from the clip.
      return list.circular_complex_clip() ? draw_circled(list, region) : draw_complex(list, region);
    case DrawForm::complex:
      return draw_complex(list, region);
  }
}

}  // namespace dlview
