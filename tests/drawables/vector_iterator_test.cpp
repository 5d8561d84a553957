#include "displaylist/drawables/vector_iterator.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/client_drawables.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

namespace {

using Vector = DL::VectorTemplate<long>;
using Iterator = std::unique_ptr<DL::DrawableVectorIterator>;

/// A drawable of as many vectors as wanted; vector i starts at (i, 0).
class Vectors final : public client::Mark {
 public:
  explicit Vectors(int vectors, bool fast = true) : m_vectors(vectors), m_fast(fast) {}

  bool supports_fast_vector_iterator() const override { return m_fast && m_vectors > 0; }
  int get_vector_count() const override { return m_vectors; }
  bool get_vector(int index, Vector& vector) const override {
    vector = {{index, 0}, {index, 1}};
    return false;  // nobody is to look at the answer
  }

 private:
  int m_vectors;
  bool m_fast;
};

TEST(VectorIterator, DeliversTheFirstVectorAtOnce) {
  Vectors drawable(3);
  DL::DrawableVectorIterator iterator;
  EXPECT_TRUE(iterator.initialize(&drawable));
  EXPECT_EQ(iterator.m_pDrawable, &drawable);
  EXPECT_EQ(iterator.m_count, 3);
  EXPECT_EQ(iterator.m_index, 0);
  EXPECT_TRUE(iterator.m_bFast);
  EXPECT_FALSE(iterator.m_bDone);
  EXPECT_EQ(iterator.m_vector, (Vector{{0, 0}, {0, 1}}));
}

TEST(VectorIterator, StepsForwardAndBack) {
  Vectors drawable(3);
  const Iterator iterator(drawable.create_vector_iterator(false));
  for (const int expected : {1, 2}) {
    const Vector* vector = iterator->next();
    ASSERT_EQ(vector, &iterator->m_vector);
    EXPECT_EQ(vector->from.x, expected);
    EXPECT_FALSE(iterator->m_bDone);
  }
  for (int times = 0; times < 3; ++times) {
    EXPECT_EQ(iterator->next(), nullptr);
    EXPECT_TRUE(iterator->m_bDone);
    EXPECT_EQ(iterator->m_index, 3);
  }
  for (const int expected : {2, 1, 0}) {
    const Vector* vector = iterator->prev();
    ASSERT_EQ(vector, &iterator->m_vector);
    EXPECT_EQ(vector->from.x, expected);
    EXPECT_FALSE(iterator->m_bDone);
  }
  for (int times = 0; times < 3; ++times) {
    EXPECT_EQ(iterator->prev(), nullptr);
    EXPECT_TRUE(iterator->m_bDone);
    EXPECT_EQ(iterator->m_index, -1);
  }
  ASSERT_NE(iterator->next(), nullptr);
  EXPECT_EQ(iterator->m_vector.from.x, 0);
  EXPECT_FALSE(iterator->m_bDone);
}

TEST(VectorIterator, BackFromTheStartIsNullAndForwardIsTheFirstVector) {
  Vectors drawable(2);
  const Iterator iterator(drawable.create_vector_iterator(true));
  EXPECT_EQ(iterator->prev(), nullptr);
  EXPECT_EQ(iterator->m_index, -1);
  const Vector* vector = iterator->next();
  ASSERT_NE(vector, nullptr);
  EXPECT_EQ(vector->from.x, 0);
}

TEST(VectorIterator, OfADotHasOneVector) {
  DL::DLDot dot({}, {4, 5});
  const Iterator iterator(dot.create_vector_iterator(false));
  const Vector at_dot{{4, 5}, {4, 5}};
  EXPECT_FALSE(iterator->m_bDone);
  EXPECT_EQ(iterator->m_vector, at_dot);
  EXPECT_EQ(iterator->next(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  const Vector* back = iterator->prev();
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(*back, at_dot);
}

TEST(VectorIterator, OfADrawableWithoutVectorsIsDone) {
  Vectors drawable(0);
  DL::DrawableVectorIterator iterator;
  EXPECT_FALSE(iterator.initialize(&drawable));
  EXPECT_TRUE(iterator.m_bDone);
  EXPECT_EQ(iterator.m_count, 0);
  EXPECT_FALSE(iterator.m_bFast);
  EXPECT_EQ(iterator.m_pDrawable, nullptr);
  EXPECT_EQ(iterator.next(), nullptr);
  EXPECT_EQ(iterator.prev(), nullptr);
}

TEST(VectorIterator, OfADrawableThatCannotAnswerByIndexIsDone) {
  Vectors drawable(3, false);
  const Iterator iterator(drawable.create_vector_iterator(false));
  ASSERT_NE(iterator, nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  EXPECT_EQ(iterator->m_count, 3);
}

}  // namespace
