#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "files/drawable_factory.h"
#include "files/stretched_text.h"
#include "tests/files/file_checks.h"
#include "tests/support/sample_drawables.h"

namespace {

/// A stream over bytes in memory, as a client has one.
class Memory final : public ZtFsStream {
 public:
  void write(const void* buffer, std::int32_t size) override {
    m_bytes.append(static_cast<const char*>(buffer), static_cast<std::size_t>(size));
  }
  void read(void* buffer, std::int32_t* size) override {
    const std::size_t got = std::min(static_cast<std::size_t>(*size), m_bytes.size() - m_position);
    std::memcpy(buffer, m_bytes.data() + m_position, got);
    m_position += got;
    *size = static_cast<std::int32_t>(got);
  }

 private:
  std::string m_bytes;
  std::size_t m_position = 0;
};

int index_of(void*, LM_Rendition*) {
  return 0;
}

LM_Rendition* rendition_at(void* only, int) {
  return static_cast<LM_Rendition*>(only);
}

TEST(DrawableFactory, MakesTheClassesOfRawStreams) {
  LM_Rendition rendition;
  DL::DisplayList list;
  list.add(new files::StretchedText(&rendition, 0.75, LM_Font(), {3, 4}, L"wide", 9.0, 0.5,
                                    {1, 2, 30, 40}, nullptr));
  list.add(samples::make_palettized<DL::DLText>(&rendition).release());
  list.add(samples::make_palettized<DL::DLDot>(&rendition).release());
  Memory stream;
  list.serialize_out(&stream, &index_of, nullptr);
  DL::DisplayList read;
  read.serialize_in(&stream, &rendition_at, &rendition, &files::drawable_factory, nullptr,
                    &DL::standard_post_read);
  EXPECT_EQ(file_checks::describe(read), file_checks::describe(list));
  const auto drawables = drawables_of(read);
  ASSERT_EQ(drawables.size(), 3U);
  ASSERT_EQ(file_checks::class_of(*drawables[0]),
            DL::class_change::operation_table<files::StretchedText>());
  EXPECT_EQ(static_cast<files::StretchedText*>(drawables[0])->width_factor(), 0.75F);
}

TEST(DrawableFactory, KnowsNoOtherTags) {
  for (const std::uint32_t tag : {0x40000021U, 0x40010001U, 0U, 0x80000010U}) {
    EXPECT_EQ(files::drawable_factory(nullptr, static_cast<int>(tag)), nullptr) << tag;
  }
}

}  // namespace
