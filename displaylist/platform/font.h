#pragma once

#include <cstdint>
#include <string>

#include "displaylist/platform/counted.h"
#include "displaylist/platform/export.h"

/// What a font is asked for by. A renderer finds the closest face that there
/// is; what is not given is left to it.
struct LM_Font_Description {
  /// Which items are given.
  enum Item : std::uint32_t {
    NAME = 1,
    BOLD = 2,
    ITALIC = 4,
    WEIGHT = 8,
    WIDTH = 16,
    CHARACTER = 32,
    EVERY_ITEM = 63,
  };

  /// The family, one UTF-16 code unit per element: "DejaVu Sans".
  std::wstring name;
  std::uint8_t bold = 0;    ///< other than 0 asks for a bold face
  std::uint8_t italic = 0;  ///< other than 0 asks for an italic or slanted face
  /// 100 (thin) to 900 (black), 400 regular, 700 bold; 0 leaves it to `bold`.
  std::int32_t weight = 0;
  /// The width of the face's letters in percent, 50 to 200; 0 is normal.
  std::int32_t width = 0;
  /// A Unicode character that the face must be able to show, such as U+05D0 for
  /// Hebrew; 0 for any.
  std::int32_t character = 0;
  std::uint32_t given = 0;  ///< of Item

  friend bool operator==(const LM_Font_Description&, const LM_Font_Description&) = default;
};

/// What font handles share: the description. Renderers derive their faces from
/// it. Never changed once it is shared, so that any thread may read it.
class LUMEN_API LM_Font_Data : public LM_Counted {
 public:
  explicit LM_Font_Data(LM_Font_Description description) : m_description(std::move(description)) {}

  [[nodiscard]] const LM_Font_Description& description() const { return m_description; }

 private:
  LM_Font_Description m_description;
};

/// A font: a counted handle to its data. One without data stands for the
/// renderer's usual font.
class LM_Font {
 public:
  LM_Font() = default;
  explicit LM_Font(LM_Handle<const LM_Font_Data> data) : m_data(std::move(data)) {}
  explicit LM_Font(const LM_Font_Description& description)
      : m_data(LM_Create<const LM_Font_Data>(description)) {}

  [[nodiscard]] const LM_Font_Data* data() const { return m_data.get(); }
  /// The description; that of the usual font gives nothing.
  [[nodiscard]] LM_Font_Description description() const {
    return m_data ? m_data->description() : LM_Font_Description{};
  }
  /// Whether both refer to the same data.
  friend bool operator==(const LM_Font&, const LM_Font&) = default;

 private:
  LM_Handle<const LM_Font_Data> m_data;
};
static_assert(sizeof(LM_Font) == sizeof(void*));
