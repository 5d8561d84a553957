#include "files/records_p.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string_view>

#include "displaylist/core/coding.h"
#include "displaylist/platform/multibyte.h"
#include "files/layout_p.h"

namespace files {

// --- Dots, ellipses, images ---------------------------------------------------

void Record<DL::DLColorizedDot>::write(const DL::DLColorizedDot& dot, ZtFsStream& stream,
                                       Writing&) {
  DL::coding::write(stream, dot.m_color.word);
}

bool Record<DL::DLColorizedDot>::read(DL::DLColorizedDot& dot, Reading& reading) {
  return DL::coding::read(reading.reader, dot.m_color.word);
}

void Record<DL::DLColorizedEllipse>::write(const DL::DLColorizedEllipse& ellipse,
                                           ZtFsStream& stream, Writing&) {
  DL::coding::write(stream, ellipse.fill_color.word);
  DL::coding::write<std::uint32_t>(stream, ellipse.use_arc ? 1 : 0);
}

bool Record<DL::DLColorizedEllipse>::read(DL::DLColorizedEllipse& ellipse, Reading& reading) {
  std::uint32_t use_arc = 0;
  if (!DL::coding::read(reading.reader, ellipse.fill_color.word) ||
      !DL::coding::read(reading.reader, use_arc)) {
    return false;
  }
  ellipse.use_arc = use_arc != 0;
  return true;
}

void Record<DL::DLRowOfDots>::write(const DL::DLRowOfDots& row, ZtFsStream& stream, Writing&) {
  DL::coding::write(stream, row.origin);
  DL::coding::write(stream, row.step);
  DL::coding::write(stream, row.dot_count);
}

bool Record<DL::DLRowOfDots>::read(DL::DLRowOfDots& row, Reading& reading) {
  return DL::coding::read(reading.reader, row.origin) &&
         DL::coding::read(reading.reader, row.step) &&
         DL::coding::read(reading.reader, row.dot_count);
}

void Record<DL::DLImage>::write(const DL::DLImage& drawable, ZtFsStream& stream, Writing& writing) {
  DL::coding::write(stream, drawable.m_rect);
  DL::coding::write(stream, writing.image_number(drawable.image()));
}

bool Record<DL::DLImage>::read(DL::DLImage& drawable, Reading& reading) {
  std::uint32_t number = layout::kNone;
  if (!DL::coding::read(reading.reader, drawable.m_rect) ||
      !DL::coding::read(reading.reader, number)) {
    return false;
  }
  if (number == layout::kNone) return true;
  if (number >= reading.images.size()) return false;
  drawable.m_pImageRef =
      static_cast<LM_Image**>(LD_AllocateMemory(sizeof(LM_Image*), &reading.heap));
  if (drawable.m_pImageRef == nullptr) return false;
  *drawable.m_pImageRef = reading.images[number].get();
  (*drawable.m_pImageRef)->add_reference();
  return true;
}

// --- Arrays at vertices -------------------------------------------------------

namespace {

template <class T>
void put_array(ZtFsStream& stream, const T* array, std::int32_t count) {
  for (std::int32_t i = 0; i < count; ++i) stream.write(&array[i], sizeof(T));
}

template <class T>
bool get_array(PayloadReader& reader, T* array, std::int32_t count) {
  if (array == nullptr) reader.fail_of_memory();
  return array != nullptr && reader.get_bytes(array, static_cast<std::size_t>(count) * sizeof(T));
}

bool get_colors(Reading& reading, std::int32_t count, LM_RGB32*& colors) {
  if (!reading.reader.expect_room_for(static_cast<std::uint32_t>(count), sizeof(LM_RGB32))) {
    return false;
  }
  const std::size_t bytes = static_cast<std::size_t>(std::max(count, 1)) * sizeof(LM_RGB32);
  colors = static_cast<LM_RGB32*>(LD_AllocateMemory(bytes, &reading.heap));
  return get_array(reading.reader, colors, count);
}

/// For the arrays that textured strips give back with delete[].
template <class T>
bool get_general_array(PayloadReader& reader, std::int32_t count, T*& array) {
  if (!reader.expect_room_for(static_cast<std::uint32_t>(count), sizeof(T))) return false;
  array = new (std::nothrow) T[static_cast<std::size_t>(count)];
  return get_array(reader, array, count);
}

/// Which arrays a textured strip has beside its colours.
enum Parts : std::uint32_t { kTriples = 1, kValues = 2, kSecondTriples = 4 };

}  // namespace

void VertexRecord::write_count(const DL::Polything& points, ZtFsStream& stream) {
  m_count = std::max(points.count, 0);
  DL::coding::write(stream, m_count);
}

bool VertexRecord::read_count(Reading& reading) {
  return DL::coding::read(reading.reader, m_count) && m_count >= 0;
}

void VertexRecord::complete(const DL::Polything& points, Reading& reading) const {
  if (std::max(points.count, 0) != m_count) reading.reader.fail_of_damage();
}

void Record<DL::DLGouraudPolyline>::write(const DL::DLGouraudPolyline& line, ZtFsStream& stream,
                                          Writing&) {
  write_count(line, stream);
  put_array(stream, line.colors, m_count);
}

bool Record<DL::DLGouraudPolyline>::read(DL::DLGouraudPolyline& line, Reading& reading) {
  return read_count(reading) && get_colors(reading, m_count, line.colors);
}

void Record<DL::DLGouraudPolytriangle>::write(const DL::DLGouraudPolytriangle& strip,
                                              ZtFsStream& stream, Writing&) {
  write_count(strip, stream);
  put_array(stream, strip.colors, m_count);
}

bool Record<DL::DLGouraudPolytriangle>::read(DL::DLGouraudPolytriangle& strip, Reading& reading) {
  return read_count(reading) && get_colors(reading, m_count, strip.colors);
}

void Record<DL::DLTexturedPolytriangle>::write(const DL::DLTexturedPolytriangle& strip,
                                               ZtFsStream& stream, Writing&) {
  std::uint32_t parts = 0;
  if (strip.vertex_triples != nullptr) parts |= kTriples;
  if (strip.vertex_values != nullptr) parts |= kValues;
  if (strip.vertex_triples_2 != nullptr) parts |= kSecondTriples;
  write_count(strip, stream);
  DL::coding::write(stream, parts);
  put_array(stream, strip.colors, m_count);
  if ((parts & kTriples) != 0) put_array(stream, strip.vertex_triples, m_count);
  if ((parts & kValues) != 0) put_array(stream, strip.vertex_values, m_count);
  if ((parts & kSecondTriples) != 0) put_array(stream, strip.vertex_triples_2, m_count);
}

bool Record<DL::DLTexturedPolytriangle>::read(DL::DLTexturedPolytriangle& strip, Reading& reading) {
  std::uint32_t parts = 0;
  PayloadReader& reader = reading.reader;
  return read_count(reading) && DL::coding::read(reader, parts) &&
         get_colors(reading, m_count, strip.colors) &&
         ((parts & kTriples) == 0 || get_general_array(reader, m_count, strip.vertex_triples)) &&
         ((parts & kValues) == 0 || get_general_array(reader, m_count, strip.vertex_values)) &&
         ((parts & kSecondTriples) == 0 ||
          get_general_array(reader, m_count, strip.vertex_triples_2));
}

// --- Texts ----------------------------------------------------------------------

namespace {

std::size_t length_of(const DL::EncodedText& text) {
  return static_cast<std::size_t>(std::max(text.length(), 0));
}

/// The bytes of a multibyte string up to its end; none of a wide one.
std::string_view bytes_of(const DL::EncodedText* text) {
  if (text == nullptr || text->isUnicode() || text->multiByteString() == nullptr) return {};
  const unsigned char* bytes = text->multiByteString();
  return {reinterpret_cast<const char*>(bytes), LM_Multibyte::byte_count(bytes, text->length())};
}

/// The bytes where the text's record holds only as many as it has characters;
/// none where that is all of them.
std::string_view cut_bytes(const DL::EncodedText* text) {
  const std::string_view bytes = bytes_of(text);
  return bytes.empty() || bytes.size() <= length_of(*text) ? std::string_view() : bytes;
}

bool is_ascii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// How many characters of the locale's the bytes are.
std::int32_t character_count(const std::string& bytes) {
  std::int32_t count = 0;
  const auto* at = reinterpret_cast<const unsigned char*>(bytes.c_str());
  for (; *at != 0; at = LM_Multibyte::advanced(at, 1)) ++count;
  return count;
}

/// Whether bytes may be those that the record of this text cuts.
bool can_be_cut_bytes(const std::string& bytes, const DL::EncodedText& text) {
  return !text.isUnicode() && text.length() > 0 && bytes.size() > length_of(text) &&
         bytes.size() < std::numeric_limits<std::int32_t>::max() &&
         bytes.find('\0') == std::string::npos;
}

/// Whether there was memory for all of the text.
bool is_whole(DL::DLText& text) {
  return text.text() != nullptr && text.get_font() != nullptr &&
         (text.text()->length() < 1 || text.text()->unicodeString() != nullptr);
}

}  // namespace

void Record<DL::DLText>::write(DL::DLText& text, ZtFsStream& stream, Writing& writing) {
  const std::string_view cut = cut_bytes(text.text());
  if (!is_ascii(bytes_of(text.text()))) writing.note_character_set();
  DL::coding::write(stream, writing.font_number(text.get_font()));
  DL::coding::write(stream, static_cast<std::uint64_t>(cut.size()));
  for (const char byte : cut) DL::coding::write(stream, byte);
}

bool Record<DL::DLText>::read(DL::DLText&, Reading& reading) {
  std::uint32_t number = layout::kNone;
  if (!DL::coding::read(reading.reader, number)) return false;
  if (number != layout::kNone) {
    if (number >= reading.fonts.size()) return false;
    m_font = reading.fonts[number];
  }
  return reading.reader.get_text(m_bytes);
}

void Record<DL::DLText>::complete(DL::DLText& text, Reading& reading) {
  if (reading.reader.has_failed()) return;
  if (!is_whole(text)) return reading.reader.fail_of_memory();
  const DL::EncodedText& string = *text.text();
  if (!m_bytes.empty() && !can_be_cut_bytes(m_bytes, string)) {
    return reading.reader.fail_of_damage();
  }
  // As many characters may be other bytes in this locale: none of those that
  // were written are left out.
  if (m_bytes.empty() && reading.has_foreign_texts) m_bytes = bytes_of(&string);
  if (m_bytes.size() >= length_of(string) && !m_bytes.empty()) give_bytes(text, reading);
  if (!is_whole(text)) return reading.reader.fail_of_memory();
  *text.get_font() = m_font;
}

void Record<DL::DLText>::give_bytes(DL::DLText& text, const Reading& reading) const {
  std::int32_t length = text.text()->length();
  const auto* bytes = reinterpret_cast<const unsigned char*>(m_bytes.c_str());
  if (reading.has_foreign_texts || LM_Multibyte::byte_count(bytes, length) != m_bytes.size()) {
    length = character_count(m_bytes);
  }
  text.set_text_string(m_bytes.c_str(), length, false);
}

// --- Nested lists -----------------------------------------------------------------

void Record<DL::DrawableDisplayList>::write(DL::DrawableDisplayList& nested, ZtFsStream& stream,
                                            Writing& writing) {
  DL::coding::write(stream, writing.list_number(nested.display_list()));
  DL::coding::write<std::uint32_t>(stream, nested.m_colorData.m_pRendition == nullptr ? 0 : 1);
  DL::coding::write(stream, nested.bounds());
  DL::coding::write(stream, nested.scale());
  DL::coding::write(stream, nested.offset());
}

bool Record<DL::DrawableDisplayList>::read(DL::DrawableDisplayList& nested, Reading& reading) {
  std::uint32_t number = layout::kNone;
  DL::BoundsTemplate<long> bounds;
  DL::PointTemplate<double> scale{};
  DL::PointTemplate<double> offset{};
  if (!DL::coding::read(reading.reader, number) ||
      !DL::coding::read(reading.reader, m_has_rendition) ||
      !DL::coding::read(reading.reader, bounds) || !DL::coding::read(reading.reader, scale) ||
      !DL::coding::read(reading.reader, offset)) {
    return false;
  }
  nested.set_scale(scale);
  nested.set_offset(offset);
  reading.nest(nested, number, bounds);
  return true;
}

void Record<DL::DrawableDisplayList>::complete(DL::DrawableDisplayList& nested, Reading& reading) {
  LM_Rendition*& rendition = nested.m_colorData.m_pRendition;
  if (m_has_rendition == 0 || !reading.is_in_palette(rendition)) rendition = nullptr;
}

}  // namespace files
