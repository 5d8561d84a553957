#include "lumen/band_drawing_p.h"

#include <algorithm>

#include "lumen/raster/band_player_p.h"

namespace lumen {

/// The pieces of one band, drawn by one thread.
class BandDrawing::Pieces final : public BandPieces {
 public:
  Pieces(const LM_Piece_Action& action, const Tools& tools, std::int32_t thread)
      : m_action(action), m_tools(tools), m_thread(thread) {}

  void draw(std::uint64_t piece) override {
    m_action.draw(m_action.context, m_thread, piece, m_tools.rows_renderer);
  }

 private:
  const LM_Piece_Action& m_action;
  const Tools& m_tools;
  std::int32_t m_thread;
};

BandDrawing::Tools BandDrawing::new_tools() const {
  const auto collector = LM_Create<BandCollector>(m_picture);
  const LM_Handle<RasterDevice> rows(new RasterDevice(m_picture, RowRange()));
  return {collector, collector, rows, rows};
}

bool BandDrawing::begin(std::int32_t threads, const LM_Piece_Action& pieces) {
  if (m_is_used.exchange(true, std::memory_order_acquire)) return false;
  try {
    m_threads = std::max(threads, 0);
    m_pieces = pieces;
    m_grid = BandGrid(m_picture, m_threads);
    m_width = m_picture.width();
    m_height = m_picture.height();
    while (m_tools.size() < static_cast<std::size_t>(used_logs())) m_tools.push_back(new_tools());
    for (std::int32_t i = 0; i < used_logs(); ++i) {
      m_tools[static_cast<std::size_t>(i)].collector->start(m_device, m_grid);
    }
  } catch (...) {
    m_is_used.store(false, std::memory_order_release);
    throw;
  }
  return true;
}

const LM_Handle<LM_Renderer>& BandDrawing::collector(std::int32_t thread) {
  return m_tools[static_cast<std::size_t>(thread)].renderer;
}

bool BandDrawing::can_put_off(const LM_Rendition& rendition) const {
  return !m_device.is_antialiased() && rendition.line_style().weight <= 1;
}

bool BandDrawing::put_off(std::int32_t thread, std::uint64_t number, std::uint64_t piece,
                          std::int32_t first_row, std::int32_t last_row) {
  constexpr std::int32_t most_bands = 2;
  const RowRange rows{std::max(first_row, 0), std::min(last_row, m_height - 1)};
  if (rows.first > rows.last || m_width == 0) return true;
  if (m_grid.band_of(rows.last) - m_grid.band_of(rows.first) >= most_bands) return false;
  log(thread).begin_group(number);
  log(thread).add_piece(rows, piece);
  return true;
}

void BandDrawing::begin_group(std::int32_t thread, std::uint64_t number) {
  log(thread).begin_group(number);
}

bool BandDrawing::is_full(std::int32_t thread) const {
  return log(thread).is_full();
}

void BandDrawing::start_bands(std::uint64_t limit) {
  m_limit = limit;
  m_next_band.store(0, std::memory_order_relaxed);
}

void BandDrawing::draw_bands(std::int32_t thread) {
  // A picture of another size has no place for what was collected.
  if (m_picture.width() != m_width || m_picture.height() != m_height) return;
  for (;;) {
    const std::int32_t band = m_next_band.fetch_add(1, std::memory_order_relaxed);
    if (band >= m_grid.count()) return;
    draw_band(band, thread);
  }
}

void BandDrawing::draw_band(std::int32_t band, std::int32_t thread) {
  const Tools& tools = m_tools[static_cast<std::size_t>(thread)];
  tools.rows->draw_rows(m_grid.rows(band));
  Pieces pieces(m_pieces, tools, thread);
  BandPlayer player(m_picture, m_grid.rows(band), m_device.is_antialiased(), pieces);
  while (BandLog* const log = next_log(band)) player.play(*log, log->take_group(band));
}

BandLog* BandDrawing::next_log(std::int32_t band) const {
  BandLog* next = nullptr;
  std::uint64_t lowest = m_limit;
  for (std::int32_t i = 0; i < used_logs(); ++i) {
    const std::uint64_t number = log(i).next_group(band);
    if (number >= lowest) continue;
    lowest = number;
    next = &log(i);
  }
  return next;
}

void BandDrawing::finish_bands() {
  for (std::int32_t i = 0; i < used_logs(); ++i) log(i).forget(m_limit);
}

void BandDrawing::end() {
  for (std::int32_t i = 0; i < used_logs(); ++i) log(i).start(m_grid);
  m_is_used.store(false, std::memory_order_release);
}

}  // namespace lumen
