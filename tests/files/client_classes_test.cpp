#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "files/drawing_file.h"
#include "tests/files/file_checks.h"
#include "tests/files/kept_mark.h"
#include "tests/support/client_drawables.h"
#include "tests/support/sample_drawables.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// The drawable of the list at a place, as what it is.
template <class T>
T& nth(DL::DisplayList& list, std::size_t n) {
  return static_cast<T&>(*drawables_of(list).at(n));
}

/// Keeps a dot of its own, which its record holds.
class Holder final : public client::Mark {
 public:
  static constexpr std::uint32_t kTag = 0x40010002;
  explicit Holder(LM_RGB32 color = {}) : m_dot(color, LogicalPoint{1, 2}) {}

  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    client::write(*stream, kTag);
    m_dot.serialize_out(stream, list);
    Drawable::serialize_out(stream, list);
  }
  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override {
    static_cast<void>(client::read(*stream));  // the dot's tag
    m_dot.serialize_in(stream, list);
    Drawable::serialize_in(stream, list);
  }

  DL::DLDot m_dot;
};

/// A plain dot of a client's, with the type of dots and a tag of its own.
class Flag final : public DL::DLDot {
 public:
  static constexpr std::uint32_t kTag = 0x40010003;
  using DLDot::DLDot;

  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    client::write(*stream, kTag);
    DLDot::serialize_out(stream, list);
  }
  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override {
    DL::DLDot& dot = *this;
    static_cast<void>(client::read(*stream));  // the tag of dots
    dot.DLDot::serialize_in(stream, list);
    DL::class_change::become<Flag>(&dot);
    DL::standard_post_read(&dot);
  }
};

DL::Drawable* create(void*, int tag) {
  if (static_cast<std::uint32_t>(tag) == KeptMark::kTag) return new KeptMark;
  if (static_cast<std::uint32_t>(tag) == Holder::kTag) return new Holder;
  if (static_cast<std::uint32_t>(tag) == Flag::kTag) return new Flag(DL::class_change::kUnfilled);
  return nullptr;
}

TEST(ClientClasses, AreKeptByTheirRecords) {
  DL::DisplayList list;
  list.add(new KeptMark(17), {1, 2, 3, 4}, 0);
  list.add(new KeptMark(18), {1, 2, 3, 4}, 0);
  const file_checks::Bytes bytes = file_checks::written(list);
  const files::Contents contents = file_checks::read_back(bytes, {&create, nullptr});
  EXPECT_EQ(nth<KeptMark>(*contents.list, 0).m_value, 17U);
  EXPECT_EQ(nth<KeptMark>(*contents.list, 1).m_value, 18U);
  EXPECT_EQ(nth<KeptMark>(*contents.list, 1).m_colorData.m_color, LM_RGB32{18});
  files::Contents none;
  EXPECT_THAT(files::read_bytes(bytes, {}, none), HasSubstr("0x40010001"));
  EXPECT_EQ(none.list, nullptr);
}

TEST(ClientClasses, WithoutRecordsAreNotLostSilently) {
  DL::DisplayList list;
  list.add(new DL::DLDot({}, {1, 2}));
  list.add(new client::UnstoredMark(1), {1, 2, 3, 4}, 0);
  list.add(new client::Mark(2), {1, 2, 3, 4}, 0);
  list.add(samples::make_plain<DL::DLPolygon>().release());
  file_checks::Bytes bytes;
  EXPECT_THAT(files::write_bytes(bytes, list), HasSubstr("2 drawables are of a class"));
  EXPECT_THAT(bytes, IsEmpty());
  EXPECT_EQ(nth<DL::Drawable>(list, 3).type(), DL::DLPolygon::my_type());
  EXPECT_EQ(file_checks::class_of(nth<DL::Drawable>(list, 3)),
            DL::class_change::operation_table<DL::DLPolygon>());
}

/// A mark that takes a tag which is not free.
class Usurper final : public client::Mark {
 public:
  using Mark::Mark;
  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    client::write(*stream, m_value);
    Drawable::serialize_out(stream, list);
  }
};

TEST(ClientClasses, WithATagThatIsTakenAreRefused) {
  for (const std::uint32_t tag : {0x40000000U, 0x40000013U, 0x40000020U, 0x4000002FU, 0x4000FFFFU,
                                  0x80000010U, 0x80002000U}) {
    DL::DisplayList list;
    list.add(new Usurper(tag), {1, 2, 3, 4}, 0);
    file_checks::Bytes bytes;
    EXPECT_THAT(files::write_bytes(bytes, list), HasSubstr("1 drawable is of a class")) << tag;
    EXPECT_THAT(bytes, IsEmpty());
  }
  DL::DisplayList list;
  list.add(new Usurper(0x40010000), {1, 2, 3, 4}, 0);
  file_checks::Bytes bytes;
  EXPECT_EQ(files::write_bytes(bytes, list), "");
}

TEST(ClientClasses, OfALibraryClassTypeBecomeThemselvesAgain) {
  DL::DisplayList list;
  list.add(new DL::DLDot(LM_RGB32{7}, {1, 2}));
  list.add(new Flag(LM_RGB32{7}, LogicalPoint{3, 4}));
  list.add(new DL::DLDot(LM_RGB32{7}, {5, 6}));
  list.add(new Flag(LM_RGB32{8}, LogicalPoint{7, 8}));
  const files::Contents contents =
      file_checks::read_back(file_checks::written(list), {&create, nullptr});
  const auto originals = drawables_of(list);
  const auto read = drawables_of(*contents.list);
  ASSERT_EQ(read.size(), originals.size());
  for (std::size_t i = 0; i < read.size(); ++i) {
    EXPECT_EQ(file_checks::class_of(*read[i]), file_checks::class_of(*originals[i])) << i;
    EXPECT_EQ(read[i]->m_colorData, originals[i]->m_colorData) << i;
  }
}

/// A dot of a client's, told apart from others by a type of its own, with the
/// record that it inherits.
class Beacon final : public DL::DLDot {
 public:
  using DLDot::DLDot;
  void* type() const override { return my_type(); }
  static void* my_type() { return &_parent_type; }
  static inline void* _parent_type = DL::DLDot::my_type();
};

TEST(ClientClasses, WithTheRecordOfAnotherTypeAreRefused) {
  DL::DisplayList list;
  list.add(new Beacon(LM_RGB32{1}, LogicalPoint{1, 2}));
  file_checks::Bytes bytes;
  EXPECT_THAT(files::write_bytes(bytes, list), HasSubstr("1 drawable is of a class"));
  EXPECT_THAT(bytes, IsEmpty());
}

TEST(ClientClasses, WithARenditionThatTheirTypeCannotHaveAreRefused) {
  LM_Rendition rendition;
  for (const bool hidden : {false, true}) {
    DL::DisplayList list;
    DL::Drawable* polygon = new DL::PalettizedDrawable<DL::DLPolygon>(
        &rendition, samples::kPointCount, samples::kPoints);
    if (hidden) polygon->hide();
    list.add(polygon);
    file_checks::Bytes bytes;
    EXPECT_THAT(files::write_bytes(bytes, list), HasSubstr("1 drawable is drawn with a rendition"));
    EXPECT_THAT(bytes, IsEmpty());
    EXPECT_EQ(polygon->is_hidden(), hidden);
  }
}

TEST(ClientClasses, HaveTheColorsOfWhatTheyKeepThemselves) {
  DL::DisplayList list;
  for (std::uint32_t i = 0; i < 100; ++i) {
    list.add(new DL::DLDot(LM_RGB32{i}, {1, 2}));
    list.add(samples::make_plain<DL::DLPolygon>().release());
    if (i % 10 == 9) list.add(new Holder(LM_RGB32{i - 5}), {1, 2, 3, 4}, 0);
  }
  const files::Contents contents =
      file_checks::read_back(file_checks::written(list), {&create, nullptr});
  const auto originals = drawables_of(list);
  const auto read = drawables_of(*contents.list);
  ASSERT_EQ(read.size(), originals.size());
  std::uint32_t holders = 0;
  for (std::size_t i = 0; i < read.size(); ++i) {
    if (read[i]->type() != client::Mark::my_type()) {
      EXPECT_FALSE(read[i]->is_palettized());
      EXPECT_EQ(read[i]->m_colorData, originals[i]->m_colorData) << i;
      continue;
    }
    // What no walk finds stays palettized, with a rendition that lasts.
    const LM_Rendition* rendition = static_cast<Holder*>(read[i])->m_dot.m_colorData.m_pRendition;
    EXPECT_EQ(rendition->color(), LM_RGB32{10 * holders++ + 4});
  }
  EXPECT_EQ(holders, 10U);
}

/// Throws instead of writing itself, once it is told to.
class Thrower final : public KeptMark {
 public:
  explicit Thrower(int calls) : m_calls(calls) {}
  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    if (m_calls-- == 0) throw std::runtime_error("not now");
    KeptMark::serialize_out(stream, list);
  }

 private:
  int m_calls;
};

TEST(ClientClasses, ThatThrowLeaveTheListAsItWas) {
  // While it is asked, while all is looked through, while all is written.
  for (int calls = 0; calls < 3; ++calls) {
    DL::DisplayList list;
    list.add(samples::make_plain<DL::DLPolygon>().release());
    list.add(new Thrower(calls), {1, 2, 3, 4}, 0);
    list.add(samples::make_plain<DL::DLImage>().release());
    const auto before = drawables_of(list);
    std::vector<const void*> classes;
    for (const DL::Drawable* d : before) classes.push_back(file_checks::class_of(*d));
    file_checks::Bytes bytes;
    EXPECT_THROW(static_cast<void>(files::write_bytes(bytes, list)), std::runtime_error);
    EXPECT_THAT(bytes, IsEmpty());
    EXPECT_EQ(drawables_of(list), before);
    std::vector<const void*> classes_after;
    for (const DL::Drawable* d : before) classes_after.push_back(file_checks::class_of(*d));
    EXPECT_EQ(classes_after, classes);
    EXPECT_EQ(list.m_pfnRenditionToIndex, nullptr);
    EXPECT_EQ(files::write_bytes(bytes, list), "") << "the next time";
    EXPECT_EQ(drawables_of(*file_checks::read_back(bytes, {&create, nullptr}).list).size(), 3U);
  }
}

/// A polygon of a client's, with what it inherits.
class Field final : public DL::DLPolygon {
 public:
  using DLPolygon::DLPolygon;
};

TEST(ClientClasses, WithTheTypeOfALibraryClassAreKeptAsThat) {
  DL::DisplayList list;
  list.add(new Field(LM_RGB32{9}, samples::kPointCount, samples::kPoints));
  const void* before = file_checks::class_of(nth<DL::Drawable>(list, 0));
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  EXPECT_EQ(file_checks::class_of(nth<DL::Drawable>(list, 0)), before);
  EXPECT_EQ(file_checks::class_of(nth<DL::Drawable>(*contents.list, 0)),
            DL::class_change::operation_table<DL::DLPolygon>());
  EXPECT_EQ(file_checks::geometry(nth<DL::Drawable>(*contents.list, 0)),
            file_checks::geometry(nth<DL::Drawable>(list, 0)));
}

}  // namespace
