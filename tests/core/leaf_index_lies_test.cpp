// Long rows of siblings whose drawables were added with bounds that are not theirs.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/support/long_list.h"

namespace {

using long_list::Bounds;
using long_list::LongList;

/// What the client says of a drawable's bounds.
enum class Lie { none, larger, smaller, elsewhere, inverted, empty };

class LyingList : public LongList {
 public:
  using LongList::LongList;

  void add(int count, bool inverted_too) {
    for (int i = 0; i < count; ++i) {
      const Bounds own = jumps.next();
      ProbeDrawable* probe = scene.make(own);
      const Lie lie = dice.one_in(4) ? any_lie(inverted_too) : Lie::none;
      RC_ASSERT(list().add(probe, told(own, lie), 0) != nullptr);
    }
  }
  void add_before(bool inverted_too) {
    const auto all = drawables_of(list());
    const Bounds own = jumps.next();
    ProbeDrawable* probe = scene.make(own);
    RC_ASSERT(list().add_before(list().m_pRootGroup, dice.any_of(all), probe,
                                told(own, any_lie(inverted_too))) != nullptr);
  }

 private:
  Lie any_lie(bool inverted_too) { return static_cast<Lie>(dice.below(inverted_too ? 6 : 4)); }
  Bounds told(const Bounds& own, Lie lie) {
    switch (lie) {
      case Lie::none:
        return own;
      case Lie::larger: {
        Bounds larger = own;
        larger.widen(jumps.next());
        return larger;
      }
      case Lie::smaller:
        return {own.min, own.min};
      case Lie::elsewhere:
        return jumps.next();
      case Lie::inverted:
        return {own.max.x, own.max.y, own.min.x, own.min.y};
      case Lie::empty:
        return {};
    }
    return own;
  }
};

void draw_lies(std::uint32_t seed, int count, int steps, bool inverted_too) {
  LyingList list(seed);
  list.add(count, inverted_too);
  list.check_draws(4);
  for (int i = 0; i < steps; ++i) {
    list.dice.one_in(2) ? list.add(1 + list.dice.below(60), inverted_too)
                        : list.add_before(inverted_too);
    list.draw_whole();
    list.check_draws(4);
  }
}

RC_GTEST_PROP(LeafIndexLies, RedrawsGoByTheGroupsWhateverTheirDrawablesAre, ()) {
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  draw_lies(seed, *rc::gen::inRange(60, 300), *rc::gen::inRange(0, 8), false);
}

RC_GTEST_PROP(LeafIndexLies, InvertedBoundsAreNoBetterAndNoWorse, ()) {
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  draw_lies(seed, *rc::gen::inRange(60, 300), *rc::gen::inRange(0, 8), true);
}

}  // namespace
