#include "lumen/band_drawing_p.h"

#include <algorithm>

#include "lumen/raster/band_player_p.h"

namespace lumen {

bool BandDrawing::begin(std::int32_t threads) {
  if (m_is_used.exchange(true, std::memory_order_acquire)) return false;
  try {
    m_threads = std::max(threads, 0);
    m_grid = BandGrid(m_picture);
    m_width = m_picture.width();
    m_height = m_picture.height();
    while (m_collectors.size() < static_cast<std::size_t>(used_logs())) {
      const auto collector = LM_Create<BandCollector>(m_picture);
      m_collectors.push_back({collector, collector});
    }
    for (std::int32_t i = 0; i < used_logs(); ++i) {
      m_collectors[static_cast<std::size_t>(i)].collector->start(m_device, m_grid);
    }
  } catch (...) {
    m_is_used.store(false, std::memory_order_release);
    throw;
  }
  return true;
}

const LM_Handle<LM_Renderer>& BandDrawing::collector(std::int32_t thread) {
  return m_collectors[static_cast<std::size_t>(thread)].renderer;
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

void BandDrawing::draw_bands(std::int32_t /*thread*/) {
  // A picture of another size has no place for what was collected.
  if (m_picture.width() != m_width || m_picture.height() != m_height) return;
  for (;;) {
    const std::int32_t band = m_next_band.fetch_add(1, std::memory_order_relaxed);
    if (band >= m_grid.count()) return;
    draw_band(band);
  }
}

void BandDrawing::draw_band(std::int32_t band) {
  BandPlayer player(m_picture, m_grid.rows(band), m_device.is_antialiased());
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
