// What is written and read again is the same tree, whatever the tree.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sstream>

#include "displaylist/displaylist.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/point_printing.h"
#include "tests/support/random_drawables.h"
#include "tests/support/recursive_writer.h"
#include "tests/support/stream_client.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using stream_words::Words;
using Bounds = DL::BoundsTemplate<long>;

/// Whether the class is left out of streams.
bool is_unstored(const DL::Drawable& drawable) {
  return drawable.type() == DL::DLColorizedDot::my_type();
}

/// Tells a tree as a stream keeps it, in words: colours are indices, hidden
/// states and what is not stored are left out, the open group's level is 0.
class Description {
 public:
  Description(DL::DisplayList& list, const StreamClient& client) : m_client(client) {
    if (list.m_pRootGroup != nullptr) describe(*list.m_pRootGroup);
  }

  [[nodiscard]] std::string text() const { return m_os.str(); }

 private:
  void describe(const Group& group) {
    m_os << (group.is_open()              ? "open"
             : group.contains_drawables() ? "bottom"
                                          : "group")
         << ' ' << group.m_bounds << " level " << (group.is_open() ? 0 : group.level()) << " flags "
         << group.m_flags << " {\n";
    if (group.contains_drawables()) {
      for (DL::Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) describe(*d);
    } else {
      for (Group* child = group.m_pFirst.group; child != nullptr; child = child->m_pNext) {
        describe(*child);
      }
    }
    m_os << "}\n";
  }

  void describe(const DL::Drawable& drawable) {
    if (is_unstored(drawable)) return;
    const DL::Drawable::ColorData& color = drawable.m_colorData;
    m_os << drawable.type() << ' ' << bounds_of(drawable) << " index ";
    if (drawable.is_palettized()) {
      m_os << m_client.index(color.m_pRendition);
    } else {
      m_os << color.m_color.word;
    }
    if (drawable.type() == client::Mark::my_type()) {
      m_os << " mark " << static_cast<const client::StoredMark&>(drawable).m_value;
    }
    for (int i = 0; i < drawable.get_vector_count(); ++i) {
      DL::VectorTemplate<long> vector{};
      if (drawable.get_vector(i, vector)) m_os << ' ' << vector;
    }
    m_os << '\n';
  }

  const StreamClient& m_client;
  std::ostringstream m_os;
};

std::uint32_t any_word() {
  return *rc::gen::oneOf(rc::gen::arbitrary<std::uint32_t>(),
                         rc::gen::inRange<std::uint32_t>(0, 4));
}

Bounds any_box() {
  const auto side =
      rc::gen::oneOf(rc::gen::arbitrary<std::int32_t>(), rc::gen::inRange<std::int32_t>(-100, 100));
  return {*side, *side, *side, *side};
}

/// A list built by adds.
void build(DL::DisplayList& list, StreamClient& client) {
  list.m_cMaxOpenDrawables = *rc::gen::inRange(1, 9);
  list.m_cMaxLevel = *rc::gen::inRange(1, 32);
  const std::int32_t spread = *rc::gen::element(5, 300, 1'000'000'000);
  const int count = *rc::gen::inRange(0, 40);
  for (int i = 0; i < count; ++i) {
    DL::Drawable* drawable = random_drawables::any(client, spread);
    const Bounds bounds = bounds_of(*drawable).is_empty() ? Bounds(0, 0, 0, 0)  // without points
                                                          : bounds_of(*drawable);
    if (list.add(drawable, bounds, any_word()) == nullptr) delete drawable;
  }
}

Group* any_leaf(StreamClient& client) {
  Group* leaf = hand_made::leaf(any_word(), any_box(), any_word(), {});
  DL::Drawable** link = &leaf->m_pFirst.drawable;
  for (int left = *rc::gen::inRange(0, 4); left > 0; --left) {
    *link = random_drawables::any(client, 50);
    leaf->m_pLastChild.drawable = *link;
    link = &(*link)->m_pNext;
  }
  return leaf;
}

/// A tree as no insertion would make it, up to `depth` groups deep.
Group* any_tree(DL::DisplayList& list, StreamClient& client, int depth) {
  constexpr int shallow = 6;
  if (depth == 1 || (depth <= shallow && *rc::gen::inRange(0, 5) == 0)) {
    if (list.m_pOpenGroup != nullptr || *rc::gen::inRange(0, 3) != 0) return any_leaf(client);
    return hand_made::open(list, 5, any_box(), any_word(), {random_drawables::any(client, 50)});
  }
  Group* group = hand_made::inner(any_word(), any_box(), any_word(), {});
  const int children = *rc::gen::inRange(depth <= shallow ? 0 : 1, 4);
  for (int i = 0; i < children; ++i) {
    // One of them goes on down, the others are shallow.
    Group* child = any_tree(list, client, i == 0 ? depth - 1 : std::min(depth - 1, 2));
    group->append_child(child);
    child->m_pParent = group;
  }
  return group;
}

/// Reads all of the words. Classes without a palettized variant get the colour of
/// their index.
void read_whole(DL::DisplayList& list, StreamClient& client, const Words& words) {
  MemoryStream stream(words);
  list.serialize_in(&stream, &StreamClient::rendition_at, &client, &StreamClient::create, &client,
                    &DL::standard_post_read);
  RC_ASSERT(stream.at_end());
}

void check_streams(DL::DisplayList& original, StreamClient& client) {
  const std::string told = Description(original, client).text();
  const Words words = client.written(original);
  RC_ASSERT(words == RecursiveWriter(original).words());

  DL::DisplayList second;
  read_whole(second, client, words);
  RC_ASSERT(Description(second, client).text() == told);
  const Words twice = client.written(second);
  RC_ASSERT(twice == RecursiveWriter(second).words());
  RC_ASSERT(twice.size() == words.size());

  DL::DisplayList third;
  read_whole(third, client, twice);
  RC_ASSERT(Description(third, client).text() == told);
  RC_ASSERT(client.written(third) == twice);
}

/// Parents, last children and what the list knows of its open group.
void check_links(DL::DisplayList& list) {
  int open_groups = 0;
  for (Group* group : groups_of(list)) {
    if (group->is_open()) {
      ++open_groups;
      RC_ASSERT(list.m_pOpenGroup == group);
      RC_ASSERT(group->m_pDisplayList == &list);
    }
    if (group->contains_drawables()) continue;
    Group* last = nullptr;
    for (Group* child = group->m_pFirst.group; child != nullptr; child = child->m_pNext) {
      RC_ASSERT(child->m_pParent == group);
      last = child;
    }
    RC_ASSERT(group->m_pLastChild.group == last);
  }
  RC_ASSERT(open_groups == (list.m_pOpenGroup == nullptr ? 0 : 1));
}

RC_GTEST_PROP(TreeStreamProperty, OfAddedDrawablesGivesTheSameTree, ()) {
  StreamClient client;
  DL::DisplayList list;
  build(list, client);
  check_streams(list, client);
}

RC_GTEST_PROP(TreeStreamProperty, OfAnyTreeGivesTheSameTree, ()) {
  StreamClient client;
  DL::DisplayList list;
  hand_made::plant(list, nullptr);
  list.m_pRootGroup = any_tree(list, client, *rc::gen::element(1, 3, 6, 64));
  check_streams(list, client);
  DL::DisplayList read;
  client.read(read, client.written(list));
  check_links(read);
}

RC_GTEST_PROP(TreeStreamProperty, AListThatWasReadTakesMore, ()) {
  StreamClient client;
  DL::DisplayList list;
  build(list, client);
  DL::DisplayList read;
  read.m_cMaxOpenDrawables = *rc::gen::inRange(1, 5);
  client.read(read, client.written(list));
  std::vector<DL::Drawable*> expected = drawables_of(read);
  for (int left = *rc::gen::inRange(1, 30); left > 0; --left) {
    expected.push_back(new DL::DLDot({}, {*rc::gen::arbitrary<int>(), *rc::gen::inRange(0, 9)}));
    RC_ASSERT(read.add(expected.back()) != nullptr);
  }
  RC_ASSERT(drawables_of(read) == expected);
  check_links(read);
}

RC_GTEST_PROP(TreeStreamProperty, WithLittleMemoryForItselfGivesTheSameTree, ()) {
  StreamClient client;
  DL::DisplayList list;
  hand_made::plant(list, nullptr);
  list.m_pRootGroup = any_tree(list, client, *rc::gen::element(2, 6));
  const Words words = client.written(list);
  // The first requests are those of the walk's own stack: 16 groups, then 32.
  for (const std::int64_t good_requests : {0, 1}) {
    MemoryStream stream;
    {
      const FailingDefaultHeap failing(good_requests);
      client.write(list, stream);
    }
    RC_ASSERT(stream.words() == words);
  }
}

}  // namespace
