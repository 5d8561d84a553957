#include "displaylist/text/text.h"

#include <cmath>
#include <limits>
#include <new>

#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/platform/rendition.h"
#include "displaylist/text/encoded_text.h"
#include "displaylist/text/text_device_p.h"
#include "displaylist/text/text_iterator.h"

namespace DL {

void* DLText::_parent_type = nullptr;

namespace {

/// In single precision; what does not fit is infinite.
float to_float(double value) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  const bool fits = !(std::fabs(value) > std::numeric_limits<float>::max());
  return fits ? static_cast<float>(value) : value > 0 ? infinity : -infinity;
}

}  // namespace

DLText::DLText(const LM_RGB32& color) : Drawable(color) {}

DLText::DLText(const LM_RGB32& color, PointTemplate<double> position, double height,
               double rotation, const BoundsTemplate<long>& bounds, DisplayList* list)
    : Drawable(color),
      m_pDisplayList(list),
      m_position(position),
      m_height(height),
      m_rotation(rotation),
      m_bounds(bounds) {}

DLText::DLText(const LM_RGB32& color, const LM_Font& font, PointTemplate<double> position,
               const char* text, std::int32_t length, double height, double rotation,
               BoundsTemplate<long> bounds, DisplayList* list, bool unicode)
    : DLText(color, position, height, rotation, bounds, list) {
  fill(font, text, length, unicode);
}

DLText::DLText(const LM_RGB32& color, const LM_Font& font, PointTemplate<double> position,
               const wchar_t* text, std::int32_t length, double height, double rotation,
               BoundsTemplate<long> bounds, DisplayList* list, bool unicode)
    : DLText(color, position, height, rotation, bounds, list) {
  fill(font, text, length, unicode);
}

DLText::DLText(LM_Rendition* rendition) : Drawable(LM_RGB32{}) {
  m_colorData.m_pRendition = rendition;
  class_change::become<PalettizedDrawable<DLText>>(this);
}

DLText::DLText(LM_Rendition* rendition, const LM_Font& font, PointTemplate<double> position,
               const char* text, std::int32_t length, double height, double rotation,
               BoundsTemplate<long> bounds, DisplayList* list, bool unicode)
    : DLText(LM_RGB32{}, font, position, text, length, height, rotation, bounds, list, unicode) {
  m_colorData.m_pRendition = rendition;
  class_change::become<PalettizedDrawable<DLText>>(this);
}

DLText::DLText(LM_Rendition* rendition, const LM_Font& font, PointTemplate<double> position,
               const wchar_t* text, std::int32_t length, double height, double rotation,
               BoundsTemplate<long> bounds, DisplayList* list, bool unicode)
    : DLText(LM_RGB32{}, font, position, text, length, height, rotation, bounds, list, unicode) {
  m_colorData.m_pRendition = rendition;
  class_change::become<PalettizedDrawable<DLText>>(this);
}

DLText::DLText(const DLText& other)
    : Drawable(LM_RGB32{}),
      m_pDisplayList(other.m_pDisplayList),
      m_pFont(other.m_pFont == nullptr ? nullptr : new_font_cell(*other.m_pFont)),
      m_pText(other.m_pText == nullptr ? nullptr : new EncodedText(*other.m_pText)),
      m_position(other.m_position),
      m_height(other.m_height),
      m_rotation(other.m_rotation),
      m_bounds(other.m_bounds) {
  m_colorData = other.m_colorData;
}

template <class Character>
void DLText::fill(const LM_Font& font, const Character* text, std::int32_t length, bool unicode) {
  m_pFont = new_font_cell(font);
  m_pText = new EncodedText(text, length, unicode);
}

DLText::~DLText() {
  delete m_pText;
  release_font();
}

LM_Font* DLText::new_font_cell(const LM_Font& font) {
  void* cell = LD_AllocateMemory(sizeof(LM_Font), nullptr);
  return cell == nullptr ? nullptr : ::new (cell) LM_Font(font);
}

void DLText::release_font() {
  if (m_pFont == nullptr) return;
  m_pFont->~LM_Font();
  LD_ReleaseMemory(m_pFont);
  m_pFont = nullptr;
}

void* DLText::my_type() {
  return &_parent_type;
}

void* DLText::type() const {
  return my_type();
}

Drawable* DLText::clone() {
  auto* copy = new DLText(*this);
  if (copy == nullptr) return nullptr;
  const bool lacks_font = m_pFont != nullptr && copy->m_pFont == nullptr;
  const bool lacks_text = m_pText != nullptr && (copy->m_pText == nullptr ||
                                                 (has_characters() && !copy->has_characters()));
  if (!lacks_font && !lacks_text) return copy;
  delete copy;
  return nullptr;
}

void DLText::hide() {
  class_change::become<HiddenDrawable<DLText>>(this);
}

int DLText::get_vector_count() const {
  return 1;
}

DrawableVectorIterator* DLText::create_vector_iterator(bool flag) {
  return new DrawableVectorIteratorText(*this, flag);
}

void DLText::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 104;
  // The labels are wide strings, which a narrow stream shows as addresses.
  static const wchar_t label[] = L"DLText: level  ";
  static const wchar_t separator[] = L", this = ";
  dump_line::indent(os, level);
  os << static_cast<const void*>(label) << level << static_cast<const void*>(separator)
     << static_cast<const void*>(this) << std::endl;
  dump_line::count(statistics, object_bytes);
}

// --- Attributes ---------------------------------------------------------------

void DLText::replace_text(EncodedText* text) {
  delete m_pText;
  m_pText = text;
}

void DLText::set_text_string(const char* text, std::int32_t length, bool unicode) {
  replace_text(new EncodedText(text, length, unicode));
}

void DLText::set_text_string(const wchar_t* text, std::int32_t length, bool unicode) {
  replace_text(new EncodedText(text, length, unicode));
}

bool DLText::has_characters() const {
  return m_pText != nullptr && m_pText->length() > 0 && m_pText->unicodeString() != nullptr;
}

bool DLText::set_text_attributes(DisplayList& list) {
  constexpr double largest_size = 1e15;
  constexpr double largest_set_size = 32767.0;
  const double size = m_height * text_device::mapping_in_force(list).scale.y;
  if (size > largest_size) return false;
  LM_Rendition& drawn_with = *rendition(list);
  double angle = m_rotation;
  if (list.m_bRotated) {
    const double* r = list.m_rotation;
    const double x = std::cos(angle);
    const double y = std::sin(angle);
    angle = std::atan2(r[0] * x + r[5] * y, r[4] * x + r[1] * y);
  }
  drawn_with.set_text_size(to_float(size > largest_set_size ? largest_set_size : size));
  drawn_with.set_text_rotation(to_float(angle));
  drawn_with.set_text_width_scale(1.0F);
  return true;
}

std::int32_t DLText::greeking_height(bool alternate_scale) {
  return alternate_scale ? 75 : 5;
}

bool DLText::is_text_greeked(std::int32_t device_height, bool alternate_scale) {
  return device_height < greeking_height(alternate_scale);
}

std::int32_t DLText::height(DisplayList& list) {
  return rounding::truncate(m_height * text_device::mapping_in_force(list).scale.y);
}

LM_Font* DLText::get_font() {
  return m_pFont;
}

PointTemplate<double> DLText::get_position() {
  return m_position;
}

double DLText::rotation() {
  return m_rotation;
}

void DLText::set_rotation(double rotation) {
  m_rotation = rotation;
}

}  // namespace DL
