#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <thread>

#include "displaylist/core/display_list.h"
#include "displaylist/core/event.h"
#include "displaylist/platform/export.h"

namespace DL {

class BottomGroup;

/// Draws the closed bottom groups of a display list on up to four worker
/// threads, in no order among groups:
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
  /// queued, when there are no threads. May draw all that is queued.
  bool hand_over(const BottomGroup& group, bool clipped, std::uint32_t flags);

  /// Whether nothing is queued.
  [[nodiscard]] bool is_drained() const { return m_queueCount[0] == 0; }

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
  bool start_thread(std::int32_t index);
  void work();
  void draw_queue(std::int32_t index);
  void draw_queues();
  void release_queues();
  void forget_queues();

  DisplayList m_contexts[kMaxThreads];  ///< what the workers draw with
  LM_Rendition m_privateRenditions[kMaxThreads];
  std::exception_ptr m_thrown[kMaxThreads];  ///< by a drawable, on the way to the client
};

/// Whether no worker has groups of the list still to draw.
[[nodiscard]] bool is_drained(const DisplayList& list);

}  // namespace DL
