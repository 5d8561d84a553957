#pragma once

#include <cstdint>

#include "displaylist/platform/counted.h"
#include "displaylist/platform/export.h"

class LM_Renderer;
class LM_Rendition;

/// Draws what was put off. `draw(context, thread, piece, renderer)` draws the piece
/// through the renderer, which has dots and polylines only.
struct LM_Piece_Action {
  void* context = nullptr;
  void (*draw)(void* context, std::int32_t thread, std::uint64_t piece,
               const LM_Handle<LM_Renderer>& renderer) = nullptr;
};

/// How a renderer has groups of drawables drawn by several threads and shows
/// them in the order of their numbers: the threads draw through collectors, which
/// note what they are told, each sorting it into bands of the device; then the
/// threads draw the bands, each band in order.
///
///     if (!drawing.begin(threads, pieces)) return;  // the client's thread
///     drawing.begin_group(i, number);           // thread i, and so on until
///     ... collector(i) is drawn through ...     // it is full or all is drawn
///     ... or drawing.put_off(i, number, piece, first_row, last_row) ...
///     drawing.start_bands(limit);               // the client's thread
///     drawing.draw_bands(i);                    // every thread i
///     drawing.finish_bands();                   // the client's thread, which
///     drawing.end();                            // goes on with groups, or ends
///
/// "Thread i" is whoever works with collector i: 0 up to `threads`, the highest
/// of which is the client's own thread. Different threads may call begin_group,
/// put_off, is_full and draw_bands at once, each with its own number; all else is
/// called while nothing else is. A group is drawn by one thread, and each thread draws
/// its groups in the order of their numbers.
///
/// Between begin and end nothing that the device is set up with changes. What is
/// drawn through the renderer itself meanwhile is shown at once, without order.
class LM_Ordered_Drawing {
 public:
  /// Starts with nothing collected. False when the renderer draws in order for
  /// somebody else already; then nothing else may be called. `pieces` draws what
  /// is put off. May throw std::bad_alloc, as if it had not been called.
  [[nodiscard]] virtual bool begin(std::int32_t threads, const LM_Piece_Action& pieces) = 0;

  /// What a thread draws with until the end. It is not to be used by two
  /// threads at once. Its actions keep nothing of what they are given but by
  /// count or as a copy. They may throw std::bad_alloc: then all of what an action
  /// draws is missing in some bands.
  [[nodiscard]] virtual const LM_Handle<LM_Renderer>& collector(std::int32_t thread) = 0;

  /// What the thread's collector is told from now on belongs to this group.
  virtual void begin_group(std::int32_t thread, std::uint64_t number) = 0;

  /// Whether the device draws dots and polylines of such a rendition in less time
  /// than it takes to note them, on no rows but those between their points.
  [[nodiscard]] virtual bool can_put_off(const LM_Rendition& rendition) const = 0;
  /// In place of beginning a group that consists of such dots and polylines, and of
  /// drawing it through the collector: the group is the piece, and draw_bands has it
  /// drawn anew for each band that shows one of the rows between the first and the
  /// last, by the thread that draws the band; for none when the first is behind the
  /// last. False, with nothing done, when these
  /// bands are too many. May throw std::bad_alloc; then some bands miss the piece.
  [[nodiscard]] virtual bool put_off(std::int32_t thread, std::uint64_t number, std::uint64_t piece,
                                     std::int32_t first_row, std::int32_t last_row) = 0;

  /// Whether the thread ought to begin no other group before bands are drawn,
  /// so that memory stays within limits. Never right after finish_bands for the
  /// thread whose next group was the limit.
  [[nodiscard]] virtual bool is_full(std::int32_t thread) const = 0;

  /// Draws bands, next, of the groups whose numbers are below the limit.
  virtual void start_bands(std::uint64_t limit) = 0;
  /// Draws bands until there are none left. What it throws (std::bad_alloc)
  /// leaves out part of a band.
  virtual void draw_bands(std::int32_t thread) = 0;
  /// Forgets the groups below the limit.
  virtual void finish_bands() = 0;

  /// Forgets what was collected and not drawn. The room stays for the next time.
  virtual void end() = 0;

 protected:
  LM_Ordered_Drawing() = default;
  LM_Ordered_Drawing(const LM_Ordered_Drawing&) = delete;
  LM_Ordered_Drawing& operator=(const LM_Ordered_Drawing&) = delete;
  // Nobody deletes it but the renderer.
  ~LM_Ordered_Drawing() = default;
};
