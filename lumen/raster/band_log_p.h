#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <span>
#include <vector>

#include "displaylist/platform/rendition.h"
#include "displaylist/platform/texture_pages.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/raster/row_range_p.h"
#include "lumen/raster/word_log_p.h"

namespace lumen {

/// How the rows of a picture are cut into bands, all of the same height but the
/// last one.
class BandGrid {
 public:
  /// So many that threads end at about the same time, so few that what is drawn
  /// lies in few of them.
  static constexpr std::int32_t bands_a_thread = 5;
  static constexpr std::int32_t most_bands = 32;
  /// A row in its band fits this many bits.
  static constexpr std::int32_t row_bits = 12;

  BandGrid() = default;
  BandGrid(const Picture& picture, std::int32_t threads);

  [[nodiscard]] std::int32_t count() const { return m_count; }
  [[nodiscard]] std::int32_t band_of(std::int32_t row) const { return row >> m_shift; }
  [[nodiscard]] RowRange rows(std::int32_t band) const {
    return {band << m_shift, ((band + 1) << m_shift) - 1};
  }
  /// The row as it is counted within its band.
  [[nodiscard]] std::uint32_t row_in_band(std::int32_t row) const {
    return static_cast<std::uint32_t>(row) & m_row_mask;
  }

 private:
  std::int32_t m_shift = 0;
  std::uint32_t m_row_mask = 0;
  std::int32_t m_count = 0;
};

/// What a thread has to draw in a picture, sorted into bands, as words. The
/// first word of each step has the step in its lowest bits.
enum class BandStep : std::uint32_t {
  pixel,            ///< column and row, fully covered
  solid,            ///< column and row; length and cover
  varied,           ///< column and row; length; covers
  state,            ///< the number of what follows is drawn in
  ink,              ///< the colour of what follows
  polyline,         ///< BandPolyline; points
  inside_polyline,  ///< BandPoints; points: opaque, solid, inside the clips and the band
  smooth_polyline,  ///< BandSmoothPolyline; points
  shaded_polyline,  ///< BandShadedPolyline; points; colours
  shaded_strip,     ///< BandStrip; points; colours
  textured_strip,   ///< BandTexturedStrip; points; the arrays that there are
  image,            ///< BandImage
  piece,            ///< BandPiece
};

/// A line of weight 1 without antialiasing, unless it is a smooth one.
struct BandPolyline {
  std::int32_t count;
  std::int32_t pattern;
};
struct BandPoints {
  std::int32_t count;
};
struct BandSmoothPolyline {
  std::int32_t count;
  std::int32_t margin;  ///< as SmoothLine tells
};
struct BandShadedPolyline {
  std::int32_t count;
  std::int32_t weight;
  std::int32_t pattern;
  std::int32_t start_style;
  std::int32_t end_style;
};
struct BandStrip {
  std::int32_t count;
};
struct BandTexturedStrip {
  std::int32_t count;
  std::int32_t wrap;
  std::uint32_t pages;  ///< their place among the pages, or BandLog::none
  std::uint32_t has_colors;
  std::uint32_t has_first;
  std::uint32_t has_modulation;
  std::uint32_t has_second;
};
struct BandImage {
  LM_DCI_Point corner;
  std::uint32_t image;  ///< its place among the images
};

/// What was put off, by its number.
struct BandPiece {
  std::uint32_t low;
  std::uint32_t high;
};

/// Notes what one thread draws, for bands that are drawn later. Everything that
/// the thread was given only for the time of a call is copied or held by count.
/// May throw std::bad_alloc; then some bands miss what was to be noted. It keeps
/// its room, so that it allocates only while it grows.
class BandLog {
 public:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  /// What steps are drawn within, beside the colour.
  struct State {
    PixelRectangle inside;
    LM_Handle<const LM_Contour_Set_Data> clip;  ///< null for none
  };
  /// Where the steps of a group start in a band.
  struct Group {
    std::uint64_t number;
    std::size_t start;
  };

  explicit BandLog(const Picture& picture) : m_picture(picture) {}

  /// Forgets everything and goes on with these bands.
  void start(const BandGrid& grid);
  /// Forgets the groups below the limit.
  void forget(std::uint64_t limit);
  /// What is noted from now on belongs to the group, whose number is higher than
  /// those before.
  void begin_group(std::uint64_t number) {
    m_group = number;
    ++m_setting;
  }
  /// Whether more is noted than should be kept at a time.
  [[nodiscard]] bool is_full() const;

  // --- Noting -------------------------------------------------------------

  /// What is noted from now on is drawn within the rendition's clips.
  void use(const LM_Rendition& rendition) {
    if (rendition.change_serial() != m_serial) look_at(rendition);
  }
  /// And in the colour.
  void use(const LM_Rendition& rendition, LM_RGB32 ink) {
    use(rendition);
    if (ink.word != m_ink) set_ink(ink.word);
  }
  /// The visible pixels of the rendition used last.
  [[nodiscard]] const PixelRectangle& inside() const { return m_inside; }
  [[nodiscard]] bool has_clip() const { return m_states[m_state].clip.get() != nullptr; }

  // All pixels lie in the picture.
  void pixel(std::int32_t x, std::int32_t y) { *extend(y, 1) = place(BandStep::pixel, x, y); }
  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t cover);
  void varied(std::int32_t x, std::int32_t y, std::int32_t length, const std::uint8_t* covers);

  /// The words of `count` things that consist of words.
  template <class T>
  static std::span<const std::uint32_t> words_of(const T* things, std::int32_t count = 1) {
    static_assert(sizeof(T) % sizeof(std::uint32_t) == 0);
    const std::size_t words = sizeof(T) / sizeof(std::uint32_t);
    if (things == nullptr) return {};
    return {reinterpret_cast<const std::uint32_t*>(things),
            static_cast<std::size_t>(count) * words};
  }
  /// Notes a step for all bands of the rows, which lie in the picture.
  template <class Head>
  void add(const RowRange& rows, BandStep step, const Head& head,
           std::initializer_list<std::span<const std::uint32_t>> parts) {
    constexpr std::size_t head_words = sizeof(Head) / sizeof(std::uint32_t);
    std::size_t size = 1 + head_words;
    for (const std::span<const std::uint32_t>& part : parts) size += part.size();
    const std::int32_t last = m_grid.band_of(rows.last);
    for (std::int32_t band = m_grid.band_of(rows.first); band <= last; ++band) {
      std::uint32_t* words = extend(m_bands[static_cast<std::size_t>(band)], size);
      *words++ = first_word(step, 0);
      words = std::copy_n(words_of(&head).data(), head_words, words);
      for (const std::span<const std::uint32_t>& part : parts) {
        words = std::copy(part.begin(), part.end(), words);
      }
    }
  }
  /// Notes a piece of the group as all that it draws on the rows, which lie in the
  /// picture.
  void add_piece(const RowRange& rows, std::uint64_t piece);
  /// Holds them until everything is forgotten; returns their place.
  std::uint32_t hold(const LM_Texture_Pages* pages);
  std::uint32_t hold(const LM_Image& image);

  [[nodiscard]] std::int32_t band_of(std::int32_t row) const { return m_grid.band_of(row); }

  // --- Drawing what was noted -----------------------------------------------

  /// The number of the band's next group; the highest number after the last.
  [[nodiscard]] std::uint64_t next_group(std::int32_t band) const {
    const Band& next = m_bands[static_cast<std::size_t>(band)];
    return next.drawn < next.groups.size() ? next.groups[next.drawn].number : no_group;
  }
  /// The steps of that group, which then has been drawn. They start with those
  /// for the state and the ink. Threads may ask for different bands at once.
  std::span<const std::uint32_t> take_group(std::int32_t band);
  [[nodiscard]] const State& state(std::uint32_t number) const { return m_states[number]; }
  [[nodiscard]] const LM_Image& image(std::uint32_t place) const { return *m_images[place]; }
  /// Null for `none`.
  [[nodiscard]] const LM_Texture_Pages* pages(std::uint32_t place) const {
    return place == none ? nullptr : m_pages[place].get();
  }

  static constexpr std::uint64_t no_group = std::numeric_limits<std::uint64_t>::max();

  // The first word of a step.
  static constexpr std::uint32_t step_bits = 4;
  static constexpr std::uint32_t row_bits = BandGrid::row_bits;
  static constexpr BandStep step_of(std::uint32_t word) {
    return static_cast<BandStep>(word & ((1U << step_bits) - 1));
  }
  static constexpr std::uint32_t value_of(std::uint32_t word) { return word >> step_bits; }
  static constexpr std::int32_t row_of(std::uint32_t word) {
    return static_cast<std::int32_t>(value_of(word) & ((1U << row_bits) - 1));
  }
  static constexpr std::int32_t column_of(std::uint32_t word) {
    return static_cast<std::int32_t>(word >> (step_bits + row_bits));
  }

 private:
  struct Band {
    WordLog words;
    std::vector<Group> groups;
    std::size_t drawn = 0;      ///< how many of the groups
    std::uint64_t setting = 0;  ///< the words go on with this one
    std::uint64_t group = no_group;
    std::uint32_t state = none;
    std::uint32_t ink = 0;

    void clear();
    void begin(std::uint64_t number) {
      groups.push_back({number, words.size()});
      group = number;
      state = none;
    }
  };

  static constexpr std::uint32_t first_word(BandStep step, std::uint32_t value) {
    return static_cast<std::uint32_t>(step) | value << step_bits;
  }
  [[nodiscard]] std::uint32_t place(BandStep step, std::int32_t x, std::int32_t y) const {
    return first_word(step, m_grid.row_in_band(y) | static_cast<std::uint32_t>(x) << row_bits);
  }

  /// Room in the band of a row for a step.
  std::uint32_t* extend(std::int32_t row, std::size_t words) {
    return extend(m_bands[static_cast<std::size_t>(m_grid.band_of(row))], words);
  }
  std::uint32_t* extend(Band& band, std::size_t words) {
    if (band.setting != m_setting) enter(band);
    return band.words.extend(words);
  }
  /// Notes what changed since the band's last step.
  void enter(Band& band) const;
  void look_at(const LM_Rendition& rendition);
  std::uint32_t number_of(const State& state);
  void set_ink(std::uint32_t word) {
    m_ink = word;
    ++m_setting;
  }
  void forget_all();

  static constexpr std::uint64_t no_serial = std::numeric_limits<std::uint64_t>::max();

  const Picture& m_picture;
  BandGrid m_grid;
  std::array<Band, BandGrid::most_bands> m_bands;
  std::vector<State> m_states;
  std::vector<LM_Handle<const LM_Texture_Pages>> m_pages;
  std::vector<LM_Handle<const LM_Image>> m_images;

  /// Counts every change of group, state and ink.
  std::uint64_t m_setting = 1;
  std::uint64_t m_group = no_group;
  std::uint64_t m_serial = no_serial;  ///< of the rendition that the state is of
  std::uint32_t m_state = none;
  PixelRectangle m_inside{};  ///< the state's
  std::uint32_t m_ink = 0;
};

}  // namespace lumen
