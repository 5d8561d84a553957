#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace DL {

/// A set of numbers that is filled in any order and emptied in ascending order,
/// in time for what it holds. A bit for each number, and a bit for each word of
/// those that may not be 0. The memory is the caller's, who keeps it.
class MarkSet {
 public:
  static constexpr std::uint32_t kWordBits = 64;

  static constexpr std::size_t words_for(std::uint32_t count) {
    return (std::size_t{count} + kWordBits - 1) / kWordBits;
  }
  /// How many words of memory a set of numbers below `count` takes.
  static constexpr std::size_t size_for(std::uint32_t count) {
    return words_for(count) + words_for(static_cast<std::uint32_t>(words_for(count)));
  }

  MarkSet() = default;
  /// In memory that holds zeros.
  MarkSet(std::uint64_t* memory, std::uint32_t count)
      : m_bits(memory),
        m_words(memory + words_for(count)),
        m_end(words_for(static_cast<std::uint32_t>(words_for(count)))) {}

  void insert(std::uint32_t number) {
    const std::uint32_t word = number / kWordBits;
    m_bits[word] |= std::uint64_t{1} << (number % kWordBits);
    m_words[word / kWordBits] |= std::uint64_t{1} << (word % kWordBits);
  }

  class Reader;

 private:
  std::uint64_t* m_bits = nullptr;
  std::uint64_t* m_words = nullptr;
  std::size_t m_end = 0;  ///< of m_words
};

/// Takes out numbers in ascending order. One reads while nothing is inserted.
class MarkSet::Reader {
 public:
  /// Of nothing.
  Reader() = default;
  explicit Reader(const MarkSet& set) : m_set(set) {}

  /// Takes out the lowest number; false when there is none.
  bool take(std::uint32_t& number) {
    while (m_bits == 0) {
      if (!next_word()) return false;
    }
    number = m_word * kWordBits + static_cast<std::uint32_t>(std::countr_zero(m_bits));
    m_bits &= m_bits - 1;
    return true;
  }
  /// Takes out all that is left.
  void clear() {
    while (next_word()) {
    }
    m_bits = 0;
  }

 private:
  bool next_word() {
    while (m_words == 0) {
      if (m_group == m_set.m_end) return false;
      m_words = std::exchange(m_set.m_words[m_group++], 0);
    }
    m_word = static_cast<std::uint32_t>((m_group - 1) * kWordBits) +
             static_cast<std::uint32_t>(std::countr_zero(m_words));
    m_words &= m_words - 1;
    m_bits = std::exchange(m_set.m_bits[m_word], 0);
    return true;
  }

  MarkSet m_set;
  std::size_t m_group = 0;    ///< of words, the next one
  std::uint64_t m_words = 0;  ///< of the group before, still to be read
  std::uint32_t m_word = 0;   ///< the one that is read
  std::uint64_t m_bits = 0;   ///< of it, still to be given
};

}  // namespace DL
