// Streams that lend their memory hold the same bytes and stand at the same place
// as those that are called for every value.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <span>
#include <string>
#include <utility>

#include "displaylist/displaylist.h"
#include "displaylist/text/encoded_text.h"
#include "tests/support/lending_stream.h"
#include "tests/support/random_drawables.h"
#include "tests/support/sample_drawables.h"
#include "tests/support/stream_client.h"
#include "tests/support/tree_walk.h"

namespace {

using Bytes = LendingStream::Bytes;
using stream_words::Words;

constexpr std::size_t kPieces[] = {0, 1, 3, 4, 7, 8, 30, 4096};

Bytes bytes_of(const Words& words) {
  const std::span<const std::byte> bytes = std::as_bytes(std::span(words));
  return {bytes.begin(), bytes.end()};
}

Bytes first(const Bytes& bytes, std::size_t count) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

void fill(DL::DisplayList& list, StreamClient& client) {
  list.m_cMaxOpenDrawables = *rc::gen::inRange(1, 9);
  for (int left = *rc::gen::inRange(0, 25); left > 0; --left) {
    list.add(random_drawables::any(client, 1000));
  }
}

/// What a stream reads and how far it gets: the words of the list that came of it.
template <class Stream>
std::pair<Words, std::size_t> read_back(Stream&& stream) {
  StreamClient client;
  DL::DisplayList list;
  list.serialize_in(&stream, &StreamClient::rendition_at, &client, &StreamClient::create, &client,
                    &DL::standard_post_read);
  return {client.written(list), stream.position()};
}

std::pair<Words, std::size_t> read_back_by_calls(const Bytes& bytes) {
  MemoryStream stream;
  stream.write(bytes.data(), static_cast<std::int32_t>(bytes.size()));
  return read_back(stream);
}

RC_GTEST_PROP(LendingStreams, HoldTheSameBytes, ()) {
  StreamClient client;
  DL::DisplayList list;
  fill(list, client);
  const Bytes expected = bytes_of(client.written(list));
  for (const std::size_t piece : kPieces) {
    LendingStream stream(piece);
    client.write(list, stream);
    RC_ASSERT(stream.bytes() == expected);
  }
  ZtFsMemoryStream stream;
  client.write(list, stream);
  RC_ASSERT(Bytes(stream.bytes().begin(), stream.bytes().end()) == expected);
}

RC_GTEST_PROP(LendingStreams, AreReadToWhereTheListEnds, ()) {
  StreamClient client;
  DL::DisplayList list;
  fill(list, client);
  Bytes bytes = bytes_of(client.written(list));
  bytes.resize(bytes.size() + 50, std::byte{7});  // of the client's own
  const auto expected = read_back_by_calls(bytes);
  RC_ASSERT(expected.second == bytes.size() - 50);
  for (const std::size_t piece : kPieces) {
    RC_ASSERT(read_back(LendingStream(piece, bytes)) == expected);
  }
  RC_ASSERT(read_back(ZtFsMemoryStream(bytes)) == expected);
}

RC_GTEST_PROP(LendingStreams, ThatAreCutOffAreReadAsFar, ()) {
  StreamClient client;
  DL::DisplayList list;
  fill(list, client);
  const Bytes whole = bytes_of(client.written(list));
  const Bytes bytes = first(whole, *rc::gen::inRange<std::size_t>(0, whole.size()));
  const auto expected = read_back_by_calls(bytes);
  for (const std::size_t piece : kPieces) {
    RC_ASSERT(read_back(LendingStream(piece, bytes)) == expected);
  }
  RC_ASSERT(read_back(ZtFsMemoryStream(bytes)) == expected);
}

TEST(LendingStreams, CutOffAtAnyByteAreReadAsFar) {
  StreamClient client;
  DL::DisplayList list;
  list.add(new DL::DLPolyline(samples::kColor, samples::kPointCount, samples::kPoints));
  list.add(samples::make_plain<DL::DLEllipse>().release());
  const Bytes whole = bytes_of(client.written(list));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes bytes = first(whole, size);
    const auto expected = read_back_by_calls(bytes);
    for (const std::size_t piece : kPieces) {
      EXPECT_EQ(read_back(LendingStream(piece, bytes)), expected) << size << ", piece " << piece;
    }
    EXPECT_EQ(read_back(ZtFsMemoryStream(bytes)), expected) << size;
  }
}

TEST(LendingStreams, HoldTextsOfBothEncodings) {
  DL::DisplayList list;
  MemoryStream by_calls;
  DL::EncodedText(L"A\u3042z", 3, true).serialize_out(&by_calls);
  DL::EncodedText("Az", 2, false).serialize_out(&by_calls);
  for (const std::size_t piece : kPieces) {
    LendingStream stream(piece);
    DL::EncodedText(L"A\u3042z", 3, true).serialize_out(&stream);
    DL::EncodedText("Az", 2, false).serialize_out(&stream);
    ASSERT_EQ(stream.bytes().size(), by_calls.size());
    DL::EncodedText wide;
    DL::EncodedText narrow;
    wide.serialize_in(&stream);
    narrow.serialize_in(&stream);
    EXPECT_EQ(std::wstring(wide.unicodeString(), 3), L"A\u3042z");
    EXPECT_EQ(narrow.length(), 2);
    EXPECT_EQ(stream.position(), by_calls.size());
  }
}

/// Writes the rest of the chain and what else it likes by itself.
class OwnEnd final : public client::Mark {
 public:
  explicit OwnEnd(bool with_text) : m_with_text(with_text) {}

  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    client::write(*stream, client::StoredMark::kTag);
    client::write(*stream, 1);
    const DL::DLDot dot({5}, {1, 2});
    const_cast<DL::DLDot&>(dot).serialize_out(stream, list);
    // The bytes of the text end as the end marker does.
    if (m_with_text) DL::EncodedText(L"\x0002\x1000", 2, true).serialize_out(stream);
  }

 private:
  bool m_with_text;
};

Bytes with_own_end(bool with_text, std::size_t piece) {
  DL::DisplayList list;
  list.add(new OwnEnd(with_text));
  list.add(new DL::DLDot({7}, {3, 4}));
  StreamClient client;
  LendingStream stream(piece);
  client.write(list, stream);
  return stream.bytes();
}

/// Words of the list's own group come before.
constexpr std::size_t kGroupBytes = 7 * sizeof(std::uint32_t);

TEST(LendingStreams, EndWhereAClientsClassWroteTheEnd) {
  for (const std::size_t piece : kPieces) {
    const Bytes bytes = with_own_end(false, piece);
    EXPECT_EQ(bytes.size(), kGroupBytes + 8 * sizeof(std::uint32_t)) << piece;
  }
}

/// Writes all of the chain by itself, and the end with the coding of streams.
class CodedEnd final : public client::Mark {
 public:
  void serialize_out(ZtFsStream* stream, DL::DisplayList&) override {
    DL::coding::write(*stream, client::StoredMark::kTag);
    DL::coding::write(*stream, std::uint32_t{1});
    DL::coding::write(*stream, DL::tag::kEnd);
  }
};

TEST(LendingStreams, EndWhereAClientsClassCodedTheEnd) {
  for (const std::size_t piece : kPieces) {
    DL::DisplayList list;
    for (int i = 0; i < 3; ++i) list.add(new CodedEnd);
    StreamClient client;
    LendingStream stream(piece);
    client.write(list, stream);
    EXPECT_EQ(stream.bytes().size(), kGroupBytes + 3 * sizeof(std::uint32_t)) << piece;
  }
}

TEST(LendingStreams, GoOnWhereTheEndWasFollowedByMore) {
  const Bytes expected = with_own_end(true, 0);
  EXPECT_EQ(expected.size(), kGroupBytes + 8 * 4 + 9 + 6 * 4);
  for (const std::size_t piece : kPieces) {
    EXPECT_EQ(with_own_end(true, piece), expected) << piece;
  }
}

TEST(Streams, ThatLendNothingAreCalledForEveryNumber) {
  StreamClient client;
  DL::DisplayList list;
  list.add(new DL::DLPolyline(samples::kColor, samples::kPointCount, samples::kPoints));
  MemoryStream stream;
  client.write(list, stream);
  EXPECT_EQ(stream.writes(), stream.words().size());
}

TEST(Streams, ThatAreCopiedLendNothing) {
  struct Copied final : ZtFsStream {
    explicit Copied(std::span<std::byte> room) { lend_room(room); }
    void write(const void*, std::int32_t) override { ++calls; }
    void read(void*, std::int32_t* size) override { *size = 0; }
    int calls = 0;
  };
  std::array<std::byte, 64> room{};
  Copied stream(room);
  Copied copy(stream);
  Copied assigned(room);
  assigned = stream;
  for (Copied* each : {&stream, &copy, &assigned}) DL::coding::write(*each, 5);
  EXPECT_EQ(stream.calls, 0);
  EXPECT_EQ(copy.calls, 1);
  EXPECT_EQ(assigned.calls, 1);
}

TEST(MemoryStreamOfTheLibrary, IsReadWhileItIsWritten) {
  ZtFsMemoryStream stream;
  std::uint32_t value = 0;
  EXPECT_FALSE(DL::coding::read(stream, value));
  for (std::uint32_t i = 0; i < 5000; ++i) {
    DL::coding::write(stream, i);
    if (i % 3 != 0) continue;
    ASSERT_TRUE(DL::coding::read(stream, value));
    ASSERT_EQ(value, i / 3);
  }
  EXPECT_EQ(stream.size(), 20000U);
  EXPECT_EQ(stream.position(), 1667U * 4);
  stream.rewind();
  EXPECT_EQ(stream.position(), 0U);
  ASSERT_TRUE(DL::coding::read(stream, value));
  EXPECT_EQ(value, 0U);
}

TEST(MemoryStreamOfTheLibrary, TakesItsOwnBytesAgain) {
  ZtFsMemoryStream stream;
  for (std::uint32_t i = 0; i < 1024; ++i) DL::coding::write(stream, i);
  for (int i = 0; i < 3; ++i) {
    stream.write(stream.bytes().data(), static_cast<std::int32_t>(stream.size()));
  }
  ASSERT_EQ(stream.size(), 8U * 4096);
  for (std::uint32_t i = 0; i < 8 * 1024; ++i) {
    std::uint32_t value = 0;
    ASSERT_TRUE(DL::coding::read(stream, value));
    ASSERT_EQ(value, i % 1024);
  }
}

TEST(MemoryStreamOfTheLibrary, GivesWhatIsLeftAtItsEnd) {
  const std::array<std::byte, 3> bytes{std::byte{1}, std::byte{2}, std::byte{3}};
  ZtFsMemoryStream stream(bytes);
  std::uint32_t value = 9;
  EXPECT_FALSE(DL::coding::read(stream, value));
  EXPECT_EQ(value, 0U);
  EXPECT_EQ(stream.position(), 3U);
  std::int32_t size = -1;
  stream.read(&value, &size);
  EXPECT_EQ(size, 0);
}

TEST(MemoryStreamOfTheLibrary, ForgetsAllWhenCleared) {
  ZtFsMemoryStream stream;
  stream.clear();
  stream.write(nullptr, 0);
  EXPECT_EQ(stream.size(), 0U);
  DL::coding::write(stream, 1.5);
  stream.clear();
  EXPECT_EQ(stream.size(), 0U);
  EXPECT_EQ(stream.position(), 0U);
  DL::coding::write<std::uint8_t>(stream, 4);
  EXPECT_EQ(stream.size(), 1U);
  EXPECT_EQ(stream.bytes()[0], std::byte{4});
}

}  // namespace
