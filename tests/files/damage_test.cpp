#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "files/drawing_file.h"
#include "fuzz/packing.h"
#include "tests/files/file_checks.h"
#include "tests/support/sample_drawables.h"

namespace {

using file_checks::Bytes;
using testing::HasSubstr;

Bytes file_of_dots() {
  DL::DisplayList list;
  for (std::int32_t i = 0; i < 10; ++i) {
    list.add(new DL::DLDot(LM_RGB32{static_cast<std::uint32_t>(i)}, {i, i}));
  }
  return file_checks::written(list, {2.0, 3.0, 4.0, {"walls"}, {{"title", "A house"}}});
}

/// Points, arrays at vertices and texts, some palettized, one hidden.
Bytes file_of_many_classes() {
  static LM_Rendition rendition;
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 2;
  list.add(samples::make_plain<DL::DLGouraudPolyline>().release());
  list.add(samples::make_palettized<DL::DLText>(&rendition).release());
  list.add(samples::make_plain<DL::DLTexturedPolytriangle>().release());
  DL::Drawable* hidden = samples::make_plain<DL::DLColorizedEllipse>().release();
  hidden->hide();
  list.add(hidden);
  list.add(samples::make_plain<DL::DLRowOfDots>().release());
  return file_checks::written(list);
}

Bytes file_of_lists_and_images() {
  static LM_Rendition rendition;
  const LM_Handle<LM_Image> image = LM_Create<lumen::PictureImage>(lumen::Picture(3, 2));
  rendition.set_texture_pages(LM_Create<const LM_Texture_Pages>(
      std::vector<LM_Handle<const LM_Image>>{image, nullptr, image}));
  DL::DisplayList list;
  auto* nested = new DL::DrawableDisplayList(&rendition, samples::new_child(), nullptr);
  list.add(nested);
  list.add(nested->clone());
  list.add(new DL::DLImage({}, {1, 2, 3, 4}, image));
  return file_checks::written(list);
}

std::vector<Bytes> small_files() {
  return {file_of_dots(), file_of_many_classes(), file_of_lists_and_images()};
}

/// Reads the bytes. What is taken for a file can be asked, hidden, added to, and
/// written again.
std::string read_and_use(const Bytes& bytes) {
  files::Contents contents;
  std::string reason = files::read_bytes(bytes, {}, contents);
  if (!reason.empty()) {
    EXPECT_EQ(contents.list, nullptr);
    EXPECT_EQ(contents.heap, nullptr);
    return reason;
  }
  static_cast<void>(file_checks::describe(*contents.list));
  Bytes again;
  EXPECT_EQ(files::write_bytes(again, *contents.list, contents.properties, {1}), "");
  auto* dot = new DL::DLDot({}, {7, 8});
  if (contents.list->add(dot) == nullptr) delete dot;  // a wrong root may not contain it
  for (DL::Drawable* drawable : drawables_of(*contents.list)) {
    drawable->hide();
    drawable->unhide();
  }
  return reason;
}

/// Keeps freed memory: the loops take and free the same blocks again and again.
[[maybe_unused]] const int kept_memory =
    mallopt(M_MMAP_THRESHOLD, 64 << 20) + mallopt(M_TRIM_THRESHOLD, 256 << 20);

/// Wrong values for a byte: single bits, its complement, and the limits.
std::vector<std::byte> wrong_values(std::byte right) {
  std::vector<std::byte> wrong;
  for (const unsigned mask : {0x01U, 0x02U, 0x10U, 0x40U, 0x80U, 0xFFU}) {
    wrong.push_back(right ^ static_cast<std::byte>(mask));
  }
  wrong.push_back(right == std::byte{0} ? std::byte{0x7F} : std::byte{0});
  wrong.push_back(static_cast<std::byte>(static_cast<unsigned>(right) + 1U));
  return wrong;
}

TEST(DamagedFile, IsTheSmallOneThatTheLoopsAreMeantFor) {
  for (const Bytes& file : small_files()) {
    EXPECT_LT(file.size(), 1024U);
    EXPECT_EQ(read_and_use(file), "");
    EXPECT_EQ(read_and_use(packing::packed(packing::payload_of(file), file)), "");
  }
}

TEST(DamagedFile, IsRefusedWhenItIsCutOffAnywhere) {
  for (const Bytes& file : small_files()) {
    for (std::size_t size = 1; size < file.size(); ++size) {
      const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
      EXPECT_THAT(read_and_use(cut), HasSubstr("cut off")) << size << " of " << file.size();
    }
  }
}

TEST(DamagedFile, IsRefusedWithAnyByteWrong) {
  for (const Bytes& file : small_files()) {
    Bytes wrong = file;
    for (std::size_t i = 0; i < file.size(); ++i) {
      for (const std::byte value : wrong_values(file[i])) {
        wrong[i] = value;
        EXPECT_NE(read_and_use(wrong), "") << "byte " << i;
      }
      wrong[i] = file[i];
    }
  }
}

TEST(DamagedFile, TellsWhatIsWrong) {
  const Bytes file = file_of_dots();
  EXPECT_THAT(read_and_use({}), HasSubstr("no display list file"));
  Bytes wrong = file;
  wrong[1] = std::byte{'P'};
  EXPECT_THAT(read_and_use(wrong), HasSubstr("no display list file"));
  wrong = file;
  wrong[8] = std::byte{2};
  packing::seal(wrong);
  EXPECT_THAT(read_and_use(wrong), HasSubstr("newer version"));
  wrong = file;
  wrong[13] = std::byte{1};
  packing::seal(wrong);
  EXPECT_THAT(read_and_use(wrong), HasSubstr("newer version"));
  for (const std::size_t place : {8U, 13U}) {
    wrong = file;
    wrong[place] = std::byte{2};
    EXPECT_THAT(read_and_use(wrong), HasSubstr("is damaged")) << "without its checksum";
  }
  wrong = file;
  wrong[file.size() / 2] ^= std::byte{4};
  EXPECT_THAT(read_and_use(wrong), HasSubstr("is damaged"));
  wrong = file;
  wrong.push_back(std::byte{0});
  EXPECT_NE(read_and_use(wrong), "");
}

TEST(DamagedPayload, IsRefusedWhenItIsCutOffAnywhere) {
  for (const Bytes& file : small_files()) {
    const Bytes payload = packing::payload_of(file);
    for (std::size_t size = 0; size < payload.size(); ++size) {
      const Bytes cut(payload.begin(), payload.begin() + static_cast<std::ptrdiff_t>(size));
      EXPECT_NE(read_and_use(packing::packed(cut, file)), "") << size;
    }
    Bytes longer = payload;
    longer.push_back(std::byte{0});
    EXPECT_NE(read_and_use(packing::packed(longer, file)), "");
  }
}

TEST(DamagedPayload, IsAnErrorOrADrawingWithAnyByteWrong) {
  for (const Bytes& file : small_files()) {
    Bytes payload = packing::payload_of(file);
    for (std::byte& byte : payload) {
      const std::byte right = byte;
      for (const std::byte value : wrong_values(right)) {
        byte = value;
        static_cast<void>(read_and_use(packing::packed(payload, file)));
      }
      byte = right;
    }
  }
}

TEST(DamagedPayload, IsReadNoFurtherThanItsFileSays) {
  const Bytes file = file_of_dots();
  Bytes payload = packing::payload_of(file);
  payload.resize(payload.size() + (std::size_t{64} << 20U));
  Bytes bomb = packing::packed(payload, file);
  EXPECT_LT(bomb.size(), 16384U);
  EXPECT_THAT(read_and_use(bomb), HasSubstr("damaged"));
  // A lie about its size does not help.
  const std::uint64_t claimed = packing::payload_size(file);
  std::memcpy(bomb.data() + bomb.size() - packing::kFooter, &claimed, sizeof claimed);
  packing::seal(bomb);
  EXPECT_THAT(read_and_use(bomb), HasSubstr("damaged"));
}

TEST(Padding, MakesFilesThatCompressTooWellLargeEnough) {
  const std::vector<LogicalPoint> points(3'000'000, LogicalPoint{1, 2});
  DL::DisplayList list;
  list.add(new DL::DLPolyline({}, static_cast<std::int32_t>(points.size()), points.data()));
  const Bytes bytes = file_checks::written(list);
  const std::uint64_t free_payload = std::uint64_t{16} << 20U;
  EXPECT_GE(16 * bytes.size() + free_payload, packing::payload_size(bytes));
  EXPECT_LT(bytes.size(), points.size());
  const files::Contents contents = file_checks::read_back(bytes);
  EXPECT_EQ(static_cast<DL::Polything*>(drawables_of(*contents.list)[0])->count, 3'000'000);
}

}  // namespace
