#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

#include "displaylist/displaylist.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"
#include "tests/text/fake_text_renderer.h"

/// Texts to test with.
namespace texts {

using Position = DL::PointTemplate<double>;

inline constexpr LM_RGB32 kColor{0x00123456};
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
inline constexpr float kTurn = 6.2831855F;

inline LM_Font font_named(const std::wstring& name) {
  return LM_Font(LM_Font_Description{.name = name, .given = LM_Font_Description::NAME});
}

/// What the constructors take beside the string.
struct Setting {
  LM_Font font = font_named(L"Abc");
  Position position{10.0, 20.0};
  double height = 12.0;
  double rotation = 0.0;
  LogicalBounds bounds{10, 20, 60, 40};
  DL::DisplayList* list = nullptr;
};

inline std::unique_ptr<DL::DLText> wide_text(const std::wstring& string, const Setting& s = {}) {
  return std::unique_ptr<DL::DLText>(new DL::DLText(kColor, s.font, s.position, string.data(),
                                                    static_cast<std::int32_t>(string.size()),
                                                    s.height, s.rotation, s.bounds, s.list, true));
}

inline std::unique_ptr<DL::DLText> multibyte_text(const std::string& string,
                                                  const Setting& s = {}) {
  return std::unique_ptr<DL::DLText>(new DL::DLText(kColor, s.font, s.position, string.data(),
                                                    static_cast<std::int32_t>(string.size()),
                                                    s.height, s.rotation, s.bounds, s.list, false));
}

inline std::unique_ptr<DL::DLText> palettized_text(LM_Rendition* rendition,
                                                   const std::wstring& string,
                                                   const Setting& s = {}) {
  return std::unique_ptr<DL::DLText>(new DL::DLText(rendition, s.font, s.position, string.data(),
                                                    static_cast<std::int32_t>(string.size()),
                                                    s.height, s.rotation, s.bounds, s.list, true));
}

/// A display list whose renderer is a fake one. Its transform is the identity.
struct FakeList {
  FakeList() { list.m_pRenderer = renderer; }

  [[nodiscard]] const LM_Text_Attributes& attributes() const {
    return list.m_rendition.text_attributes();
  }

  LM_Handle<FakeTextRenderer> renderer = LM_Create<FakeTextRenderer>();
  DL::DisplayList list;
};

}  // namespace texts
