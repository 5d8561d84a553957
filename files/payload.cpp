#include "files/payload_p.h"

#include <langinfo.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "displaylist/core/coding.h"
#include "files/layout_p.h"
#include "files/list_reader_p.h"
#include "files/list_writer_p.h"
#include "files/reading_p.h"
#include "files/rendition_record_p.h"
#include "files/writing_p.h"

namespace files {
namespace {

// --- Properties ---------------------------------------------------------------

void put_properties(PayloadWriter& writer, const Properties& properties) {
  DL::coding::write(writer, properties.unit_scale);
  DL::coding::write(writer, properties.origin_x);
  DL::coding::write(writer, properties.origin_y);
  DL::coding::write<std::uint64_t>(writer, properties.layers.size());
  for (const std::string& layer : properties.layers) writer.append(layer);
  DL::coding::write<std::uint64_t>(writer, properties.notes.size());
  for (const auto& [key, value] : properties.notes) {
    writer.append(key);
    writer.append(value);
  }
}

bool get_properties(PayloadReader& reader, Properties& properties) {
  constexpr std::uint64_t least_text = sizeof(std::uint64_t);
  std::uint64_t count = 0;
  if (!DL::coding::read(reader, properties.unit_scale) ||
      !DL::coding::read(reader, properties.origin_x) ||
      !DL::coding::read(reader, properties.origin_y) || !reader.get_count(count, least_text)) {
    return false;
  }
  for (; count > 0; --count) {
    if (!reader.get_text(properties.layers.emplace_back())) return false;
  }
  if (!reader.get_count(count, 2 * least_text)) return false;
  for (; count > 0; --count) {
    auto& [key, value] = properties.notes.emplace_back();
    if (!reader.get_text(key) || !reader.get_text(value)) return false;
  }
  return true;
}

bool get_character_set(Reading& reading) {
  std::string name;
  if (!reading.reader.get_text(name)) return false;
  reading.has_foreign_texts = !name.empty() && name != nl_langinfo(CODESET);
  return true;
}

// --- Fonts --------------------------------------------------------------------

void put_font(PayloadWriter& writer, const LM_Font_Description& font) {
  DL::coding::write(writer, font.given);
  DL::coding::write(writer, font.bold);
  DL::coding::write(writer, font.italic);
  DL::coding::write(writer, font.weight);
  DL::coding::write(writer, font.width);
  DL::coding::write(writer, font.character);
  DL::coding::write<std::uint64_t>(writer, font.name.size());
  for (const wchar_t unit : font.name) DL::coding::write(writer, static_cast<std::uint16_t>(unit));
}

bool get_font(PayloadReader& reader, LM_Font_Description& font) {
  std::uint64_t units = 0;
  if (!DL::coding::read(reader, font.given) || !DL::coding::read(reader, font.bold) ||
      !DL::coding::read(reader, font.italic) || !DL::coding::read(reader, font.weight) ||
      !DL::coding::read(reader, font.width) || !DL::coding::read(reader, font.character) ||
      !reader.get_count(units, sizeof(std::uint16_t))) {
    return false;
  }
  for (; units > 0; --units) {
    std::uint16_t unit = 0;
    if (!DL::coding::read(reader, unit)) return false;
    font.name.push_back(static_cast<wchar_t>(unit));
  }
  return true;
}

void put_fonts(PayloadWriter& writer, const Writing& writing) {
  DL::coding::write<std::uint64_t>(writer, writing.fonts().size());
  for (const LM_Font_Data* font : writing.fonts()) put_font(writer, font->description());
}

bool get_fonts(Reading& reading) {
  constexpr std::uint64_t least_font = 26;
  std::uint64_t count = 0;
  if (!reading.reader.get_count(count, least_font)) return false;
  for (; count > 0; --count) {
    LM_Font_Description font;
    if (!get_font(reading.reader, font)) return false;
    reading.fonts.emplace_back(font);
  }
  return true;
}

// --- Images -------------------------------------------------------------------

/// An image as it was read.
class StoredImage final : public LM_Image {
 public:
  StoredImage(std::int32_t width, std::int32_t height, std::vector<std::uint32_t> pixels)
      : LM_Image(width, height), m_pixels(std::move(pixels)) {}

  [[nodiscard]] const std::uint32_t* row(std::int32_t y) const override {
    return m_pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width());
  }

 private:
  std::vector<std::uint32_t> m_pixels;
};

void put_images(PayloadWriter& writer, const Writing& writing) {
  DL::coding::write<std::uint64_t>(writer, writing.images().size());
  for (const LM_Image* image : writing.images()) {
    DL::coding::write(writer, image->width());
    DL::coding::write(writer, image->height());
    const std::size_t bytes = static_cast<std::size_t>(image->width()) * sizeof(std::uint32_t);
    for (std::int32_t y = 0; bytes != 0 && y < image->height(); ++y) {
      writer.append(image->row(y), bytes);
    }
  }
}

/// So many pixels, in a vector that grows as they arrive.
bool get_pixels(PayloadReader& reader, std::uint64_t count, std::vector<std::uint32_t>& pixels) {
  constexpr std::uint64_t chunk = 1 << 16;
  if (!reader.expect_room_for(count, sizeof(std::uint32_t))) return false;
  while (pixels.size() < count) {
    const std::size_t start = pixels.size();
    const auto more = static_cast<std::size_t>(std::min<std::uint64_t>(count - start, chunk));
    pixels.resize(start + more);
    if (!reader.get_bytes(pixels.data() + start, more * sizeof(std::uint32_t))) return false;
  }
  return true;
}

bool get_images(Reading& reading) {
  constexpr std::uint64_t least_image = 8;
  std::uint64_t count = 0;
  if (!reading.reader.get_count(count, least_image)) return false;
  for (; count > 0; --count) {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> pixels;
    if (!DL::coding::read(reading.reader, width) || !DL::coding::read(reading.reader, height))
      return false;
    if (width < 0 || height < 0) return false;
    const auto area = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
    if (!get_pixels(reading.reader, area, pixels)) return false;
    reading.images.emplace_back(new StoredImage(width, height, std::move(pixels)));
  }
  return true;
}

// --- The palette --------------------------------------------------------------

void put_palette(ZtFsStream& stream, Writing& writing) {
  DL::coding::write<std::uint64_t>(stream, writing.renditions().size());
  for (const LM_Rendition* rendition : writing.renditions()) {
    DL::coding::write(stream, writing.index_of(rendition));
    put_rendition(stream, *rendition, writing);
  }
}

bool get_palette(Reading& reading) {
  constexpr std::uint64_t least_rendition = 56;
  std::uint64_t count = 0;
  if (!reading.reader.get_count(count, least_rendition)) return false;
  for (; count > 0; --count) {
    std::int32_t index = 0;
    auto rendition = std::make_unique<LM_Rendition>();
    if (!DL::coding::read(reading.reader, index) || !get_rendition(reading, *rendition))
      return false;
    if (!reading.add_rendition(index, std::move(rendition))) return false;
  }
  return true;
}

}  // namespace

std::string write_payload(PayloadWriter& writer, DL::DisplayList& list,
                          const Properties& properties) {
  ListWriter lists;
  std::string obstacle = lists.prepare(list);
  if (!obstacle.empty()) return obstacle;
  ScanStream scan;
  lists.write(scan);
  put_palette(scan, lists.writing());
  lists.writing().choose_indices(scan.words());
  put_properties(writer, properties);
  writer.append(lists.writing().character_set());
  put_fonts(writer, lists.writing());
  put_images(writer, lists.writing());
  put_palette(writer, lists.writing());
  lists.write(writer);
  return {};
}

void read_payload(PayloadReader& reader, const ReadOptions& options, Contents& contents) {
  contents.heap = std::make_unique<lumen::PackedHeap>();
  Reading reading(reader, *contents.heap, options);
  if (reader.has_failed()) return;
  if (!get_properties(reader, contents.properties) || !get_character_set(reading) ||
      !get_fonts(reading) || !get_images(reading) || !get_palette(reading)) {
    return reader.fail_of_damage();
  }
  contents.list = read_lists(reading, *contents.heap);
  if (!reader.expect_end()) return;
  contents.renditions = reading.take_renditions();
}

}  // namespace files
