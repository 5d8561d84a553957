#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace lumen {

/// A row of words that only grows at its end, and keeps its room when cleared.
class WordLog {
 public:
  [[nodiscard]] std::size_t size() const { return m_size; }
  /// The words from one place to another.
  [[nodiscard]] std::span<const std::uint32_t> part(std::size_t from, std::size_t to) const {
    return {m_words.get() + from, to - from};
  }

  /// Room for more words at the end, which the caller fills. May throw
  /// std::bad_alloc, with nothing changed. Valid until the next call.
  std::uint32_t* extend(std::size_t words) {
    if (m_capacity - m_size < words) grow(words);
    std::uint32_t* const end = m_words.get() + m_size;
    m_size += words;
    return end;
  }
  void clear() { m_size = 0; }

 private:
  [[gnu::noinline]] void grow(std::size_t words) {
    constexpr std::size_t first_capacity = 1024;
    const std::size_t capacity = std::max({first_capacity, 2 * m_capacity, m_size + words});
    // The default initialisation leaves memory alone that nobody may come to use.
    std::unique_ptr<std::uint32_t[]> larger(new std::uint32_t[capacity]);
    std::copy_n(m_words.get(), m_size, larger.get());
    m_words = std::move(larger);
    m_capacity = capacity;
  }

  std::unique_ptr<std::uint32_t[]> m_words;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
};

}  // namespace lumen
