#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <thread>

#include "displaylist/core/display_list.h"
#include "displaylist/core/event.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/ordered_drawing.h"

namespace DL {

class BottomGroup;

/// Draws the closed bottom groups of a display list on up to four worker
/// threads, in order where the renderer does that:
///
///     auto threads = std::make_unique<DL::DisplayListMultithread>(0);
///     threads->m_pDisplayList = &list;
///     list.m_pMultithread = threads.get();
///     list.m_pRootGroup->draw_unclipped(list);
///     threads->WaitForAllThreads();
///
/// The unclipped and bounded draw forms queue closed bottom groups here instead of
/// drawing them, but for those added with flag bit 0; the queues are drawn when
/// they are full and by WaitForAllThreads, which ends each redraw, also one that
/// was interrupted. Until then the tree does not change.
///
/// 1. The client's thread alone fills the queues. A worker reads its own queue
///    only between its go and its done event; between them the client waits.
/// 2. Queue 0 is filled first: nothing is queued while it is empty.
/// 3. While it draws, each worker has a display list of its own: the fields of
///    the drawing context as they are when the queues are released, the working
///    rendition as a private copy, and no tree. Drawables get that list. Both
///    the renderer and what drawables share is used from all workers at once.
/// 4. A palettized drawable changes a copy of its rendition there. Texts are the
///    exception: those that share a rendition are added with flag bit 0, and so
///    are nested lists that share a child or hold such texts.
/// 5. What a drawable throws on a worker is thrown again, once all queues are
///    drawn or given up, by the operation that had them drawn.
/// 6. This object goes before the list that it draws.
/// 7. A renderer that draws in order (LM_Renderer::ordered_drawing) shows groups
///    in the order of the traversal, those too that the calling thread draws
///    while something is queued: the workers draw into its collectors, then the
///    bands of its device. Groups of thin plain polylines then go to any
///    worker, and all groups to the calling thread where workers would take longer.
///    Drawables find a collector in their list's m_pRenderer. Any other renderer shows groups in no
///    order, and those of the calling thread at once. A renderer that is for one thread, or draws
///    in order for another list, has groups drawn by the thread that would queue them.
class DISPLAYLIST_API DisplayListMultithread {
 public:
  static constexpr std::int32_t kMaxThreads = 4;
  /// How many groups a queue holds when all are drawn.
  static constexpr std::int32_t kFullQueue = 999;

  /// Starts as many threads, 4 at most; for 0 as many as there are processors,
  /// none on a single one; none for negative numbers. Without threads, and where
  /// one cannot be started, groups are drawn by the thread that would queue them.
  /// The first worker has the highest priority that the system grants, the
  /// others one above normal.
  explicit DisplayListMultithread(int threads);
  DisplayListMultithread(const DisplayListMultithread&) = delete;
  DisplayListMultithread& operator=(const DisplayListMultithread&) = delete;
  /// Draws what is queued and ends the threads.
  ~DisplayListMultithread();

  /// Has all queued groups drawn and returns when they are.
  void WaitForAllThreads();

  /// Queues a group to be drawn with each drawable's clipped or unclipped
  /// operation; `flags` bit 1 gives it to the first worker. False, with nothing
  /// queued, when there are no threads or none may draw. May draw all that is
  /// queued.
  bool hand_over(const BottomGroup& group, bool clipped, std::uint32_t flags);

  /// Whether nothing is queued.
  [[nodiscard]] bool is_drained() const { return m_queueCount[0] == 0; }

  /// Has what the calling thread draws next through the list come behind the
  /// queued groups, until end_in_turn. False where the renderer does not draw in
  /// order, or it comes behind them already. May draw all that is queued.
  bool begin_in_turn();
  void end_in_turn() { take_back_renderer(); }

  /// Memory from the system's pages; null when there is none.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* memory, std::size_t size) noexcept;

  bool m_bStop = false;                   ///< the threads end instead of drawing
  std::int32_t m_cThreads = 0;            ///< running: 0 to 4
  std::int32_t m_iStarting = 0;           ///< the thread that is being started
  DisplayList* m_pDisplayList = nullptr;  ///< the list that is drawn; the client sets it
  Event m_hDone[kMaxThreads];             ///< a worker is ready, or its queue is drawn
  Event m_hGo[kMaxThreads];               ///< a queue is to be drawn
  std::thread m_hThread[kMaxThreads];
  std::uint32_t m_threadId[kMaxThreads] = {};  ///< the system's
  const BottomGroup* m_queue[kMaxThreads][kFullQueue + 1] = {};
  std::int32_t m_queueCount[kMaxThreads] = {};
  bool m_clipped[kMaxThreads][kFullQueue + 1] = {};  ///< how each queued group is drawn
  std::int32_t m_iNext = 0;                          ///< the queue of the next group

 private:
  /// What the workers do at a go.
  enum class Task : std::uint8_t { draw_queue, draw_turns, draw_bands };
  /// Where a group is queued.
  struct Turn {
    std::int16_t queue;
    std::int16_t place;
  };

  bool start_thread(std::int32_t index);
  void work();
  void perform(std::int32_t index);
  void perform_task(std::int32_t index);
  void draw_queue(std::int32_t index);
  void draw_group(std::int32_t queue, std::int32_t place, DisplayList& context) const;
  void lend_contexts();
  [[nodiscard]] bool draws_one_by_one() const;
  void have_all(Task task);
  void draw_queues();
  void release_queues();
  void end_release();

  bool begin_ordered();
  void end_ordered();
  void take_back_renderer();
  void follow_renderer();
  void draw_in_order();
  /// Puts the queued groups in order and shares them out.
  void line_up();
  /// Whether the calling thread had better draw everything by itself.
  [[nodiscard]] bool pays_alone() const;
  void draw_alone();
  void draw_turns(std::int32_t index);
  /// The next turn of the same thread.
  [[nodiscard]] std::int32_t turn_after(std::int32_t turn) const;
  /// Has a group drawn with the bands; false when it is not so light that this pays.
  bool put_off(std::int32_t index, std::int32_t turn);
  static void draw_piece(void* context, std::int32_t thread, std::uint64_t piece,
                         const LM_Handle<LM_Renderer>& renderer);
  /// Of the groups whose numbers are below the limit.
  void draw_bands(std::uint64_t limit);
  [[nodiscard]] bool has_more() const;
  [[nodiscard]] std::uint64_t next_number() const;
  [[nodiscard]] std::uint64_t number(const Turn& turn) const {
    return m_number[turn.queue][turn.place];
  }

  DisplayList m_contexts[kMaxThreads];  ///< what the workers draw with
  LM_Rendition m_privateRenditions[kMaxThreads];
  std::exception_ptr m_thrown[kMaxThreads];  ///< by a drawable, on the way to the client
  Task m_task = Task::draw_queue;

  /// Draws what is queued in order; null while nothing is, or without order.
  LM_Ordered_Drawing* m_pOrdered = nullptr;
  LM_Handle<LM_Renderer> m_pOrderedRenderer;  ///< whose it is
  LM_Handle<LM_Renderer> m_pLentCollector;    ///< the list's in the renderer's place
  bool m_mayPutOff = false;                   ///< light groups, until the bands are drawn
  bool m_hasCollected = false;                ///< what the calling thread draws
  std::uint64_t m_nextNumber = 0;             ///< of the next group
  std::uint64_t m_number[kMaxThreads][kFullQueue + 1] = {};  ///< of the queued groups
  Turn m_turns[kMaxThreads * kFullQueue] = {};               ///< the queued groups in order
  std::int32_t m_turnCount = 0;
  std::int32_t m_nextTurn[kMaxThreads] = {};  ///< each thread's; behind the last when it is done
};

/// Whether no worker has groups of the list still to draw.
[[nodiscard]] bool is_drained(const DisplayList& list);

/// While it exists, what the calling thread draws of a list has its turn behind
/// the groups that are queued.
class InTurn {
 public:
  explicit InTurn(const DisplayList& list) {
    if (is_drained(list) || !list.m_pMultithread->begin_in_turn()) return;
    m_pThreads = list.m_pMultithread;
  }
  InTurn(const InTurn&) = delete;
  InTurn& operator=(const InTurn&) = delete;
  ~InTurn() {
    if (m_pThreads != nullptr) m_pThreads->end_in_turn();
  }

 private:
  DisplayListMultithread* m_pThreads = nullptr;
};

}  // namespace DL
