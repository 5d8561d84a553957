#include "displaylist/core/multithread.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "displaylist/core/group.h"
#include "displaylist/core/leaf_drawing_p.h"

namespace DL {

namespace {

std::int32_t usual_thread_count() {
  const auto processors = static_cast<std::int32_t>(std::thread::hardware_concurrency());
  return processors < 2 ? 0 : processors;
}

/// Steps above the normal priority. The system may refuse: then it stays normal.
void raise_priority(std::int32_t index) {
  constexpr int highest = -4;
  constexpr int above_normal = -2;
  static_cast<void>(setpriority(PRIO_PROCESS, 0, index == 0 ? highest : above_normal));
}

}  // namespace

DisplayListMultithread::DisplayListMultithread(int threads)
    : m_contexts{DisplayList(DisplayList::WithoutTree()), DisplayList(DisplayList::WithoutTree()),
                 DisplayList(DisplayList::WithoutTree()), DisplayList(DisplayList::WithoutTree())} {
  const std::int32_t wanted = threads == 0 ? usual_thread_count() : threads;
  m_cThreads = std::clamp(wanted, 0, kMaxThreads);
  for (std::int32_t i = 0; i < m_cThreads; ++i) {
    // The threads that run already get nothing to draw then.
    if (!start_thread(i)) m_cThreads = 0;
  }
}

bool DisplayListMultithread::start_thread(std::int32_t index) {
  m_iStarting = index;
  try {
    m_hThread[index] = std::thread(&DisplayListMultithread::work, this);
  } catch (const std::exception&) {  // no thread, or no memory for one
    return false;
  }
  m_hDone[index].wait();
  return true;
}

DisplayListMultithread::~DisplayListMultithread() {
  try {
    WaitForAllThreads();
  } catch (...) {
    // Nobody is left to tell.
  }
  m_bStop = true;
  for (std::int32_t i = 0; i < kMaxThreads; ++i) {
    if (!m_hThread[i].joinable()) continue;
    m_hGo[i].set();
    m_hThread[i].join();
  }
}

void DisplayListMultithread::work() {
  const std::int32_t index = m_iStarting;
  m_threadId[index] = static_cast<std::uint32_t>(gettid());
  raise_priority(index);
  m_queueCount[index] = 0;
  m_hDone[index].set();
  m_hGo[index].wait();
  while (!m_bStop) {
    perform(index);
    m_hDone[index].set();
    m_hGo[index].wait();
  }
}

void DisplayListMultithread::perform(std::int32_t index) {
  try {
    perform_task(index);
  } catch (...) {
    m_thrown[index] = std::current_exception();
    m_nextTurn[index] = m_turnCount;
  }
}

void DisplayListMultithread::perform_task(std::int32_t index) {
  switch (m_task) {
    case Task::draw_queue:
      return draw_queue(index);
    case Task::draw_turns:
      return draw_turns(index);
    case Task::draw_bands:
      return m_pOrdered->draw_bands(index);
  }
}

void DisplayListMultithread::draw_queue(std::int32_t index) {
  for (std::int32_t i = 0; i < m_queueCount[index]; ++i) draw_group(index, i, m_contexts[index]);
  m_queueCount[index] = 0;
}

void DisplayListMultithread::draw_group(std::int32_t queue, std::int32_t place,
                                        DisplayList& context) const {
  const BottomGroup& group = *m_queue[queue][place];
  if (m_clipped[queue][place]) {
    draw_drawables<LeafForm{true, false}>(group, context);
  } else {
    draw_drawables<LeafForm{false, false}>(group, context);
  }
}

bool DisplayListMultithread::hand_over(const BottomGroup& group, bool clipped,
                                       std::uint32_t flags) {
  if (m_cThreads == 0 || (is_drained() && !begin_ordered())) return false;
  constexpr std::uint32_t first_worker = 2;
  if ((flags & first_worker) != 0) m_iNext = 0;
  const std::int32_t queue = m_iNext;
  std::int32_t& count = m_queueCount[queue];
  m_queue[queue][count] = &group;
  m_clipped[queue][count] = clipped;
  m_number[queue][count] = m_nextNumber++;
  ++count;
  if (count < kFullQueue) {
    m_iNext = (m_iNext + 1) % m_cThreads;
  } else {
    release_queues();
  }
  return true;
}

void DisplayListMultithread::WaitForAllThreads() {
  if (m_cThreads != 0 && !is_drained()) release_queues();
}

void DisplayListMultithread::lend_contexts() {
  for (std::int32_t i = 0; i < m_cThreads; ++i) {
    m_contexts[i].draw_for(*m_pDisplayList, m_privateRenditions[i]);
    if (m_pOrdered != nullptr) m_contexts[i].m_pRenderer = m_pOrdered->collector(i);
  }
}

bool DisplayListMultithread::draws_one_by_one() const {
  // The client may have gone on to such a renderer after groups were queued.
  const LM_Handle<LM_Renderer>& renderer = m_pDisplayList->m_pRenderer;
  return m_pOrdered == nullptr && renderer && renderer->options.is_for_one_thread;
}

void DisplayListMultithread::have_all(Task task) {
  m_task = task;
  const bool one_by_one = draws_one_by_one();
  for (std::int32_t i = 0; i < m_cThreads; ++i) {
    m_hGo[i].set();
    if (one_by_one) m_hDone[i].wait();
  }
  if (one_by_one) return;
  for (std::int32_t i = 0; i < m_cThreads; ++i) m_hDone[i].wait();
}

void DisplayListMultithread::draw_queues() {
  follow_renderer();
  if (m_pOrdered != nullptr) return draw_in_order();
  lend_contexts();
  have_all(Task::draw_queue);
}

void DisplayListMultithread::end_release() {
  end_ordered();
  for (std::int32_t i = 0; i < m_cThreads; ++i) m_contexts[i].rest();
  std::fill(std::begin(m_queueCount), std::end(m_queueCount), 0);
  m_iNext = 0;
}

void DisplayListMultithread::release_queues() {
  take_back_renderer();
  try {
    draw_queues();
  } catch (...) {
    end_release();  // memory ran out, or a drawable threw on this thread
    throw;
  }
  end_release();
  std::exception_ptr thrown;
  for (std::exception_ptr& each : m_thrown) {
    if (each != nullptr) thrown = std::exchange(each, nullptr);
  }
  if (thrown != nullptr) std::rethrow_exception(thrown);
}

void* DisplayListMultithread::operator new(std::size_t size) noexcept {
  void* pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return pages == MAP_FAILED ? nullptr : pages;
}

void DisplayListMultithread::operator delete(void* memory, std::size_t size) noexcept {
  if (memory != nullptr) munmap(memory, size);
}

bool is_drained(const DisplayList& list) {
  return list.m_pMultithread == nullptr || list.m_pMultithread->m_pDisplayList != &list ||
         list.m_pMultithread->is_drained();
}

}  // namespace DL
