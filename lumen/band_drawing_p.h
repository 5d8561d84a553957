#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

#include "displaylist/platform/ordered_drawing.h"
#include "lumen/band_collector_p.h"

namespace lumen {

/// How a raster device draws groups of several threads in order.
class BandDrawing final : public LM_Ordered_Drawing {
 public:
  /// Both outlive the object. `device` draws on the picture.
  BandDrawing(const RasterDevice& device, Picture& picture)
      : m_device(device), m_picture(picture) {}

  [[nodiscard]] bool begin(std::int32_t threads, const LM_Piece_Action& pieces) override;
  [[nodiscard]] const LM_Handle<LM_Renderer>& collector(std::int32_t thread) override;
  void begin_group(std::int32_t thread, std::uint64_t number) override;
  [[nodiscard]] bool can_put_off(const LM_Rendition& rendition) const override;
  [[nodiscard]] bool put_off(std::int32_t thread, std::uint64_t number, std::uint64_t piece,
                             std::int32_t first_row, std::int32_t last_row) override;
  [[nodiscard]] bool is_full(std::int32_t thread) const override;
  void start_bands(std::uint64_t limit) override;
  void draw_bands(std::int32_t thread) override;
  void finish_bands() override;
  void end() override;

 private:
  /// What a thread draws with.
  struct Tools {
    LM_Handle<BandCollector> collector;
    LM_Handle<LM_Renderer> renderer;  ///< the collector
    LM_Handle<RasterDevice> rows;     ///< draws pieces
    LM_Handle<LM_Renderer> rows_renderer;
  };
  class Pieces;

  [[nodiscard]] BandLog& log(std::int32_t thread) const {
    return m_tools[static_cast<std::size_t>(thread)].collector->log();
  }
  [[nodiscard]] std::int32_t used_logs() const { return m_threads + 1; }
  [[nodiscard]] Tools new_tools() const;
  void draw_band(std::int32_t band, std::int32_t thread);
  /// The log that has the band's next group; null when none has one to draw.
  [[nodiscard]] BandLog* next_log(std::int32_t band) const;

  const RasterDevice& m_device;
  Picture& m_picture;
  std::vector<Tools> m_tools;
  LM_Piece_Action m_pieces;
  std::int32_t m_threads = 0;
  // What the collectors took the picture for.
  std::int32_t m_width = 0;
  std::int32_t m_height = 0;
  BandGrid m_grid;
  std::uint64_t m_limit = 0;
  std::atomic<std::int32_t> m_next_band = 0;
  std::atomic<bool> m_is_used = false;
};

}  // namespace lumen
