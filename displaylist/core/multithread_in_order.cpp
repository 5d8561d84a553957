// Drawing queued groups in the order of the traversal.

#include <algorithm>
#include <limits>

#include "displaylist/core/group.h"
#include "displaylist/core/light_leaf_p.h"
#include "displaylist/core/multithread.h"

namespace DL {

namespace {

/// So many light groups are drawn in less time than threads take to begin.
constexpr std::int32_t kFewGroups = 64;

}  // namespace

bool DisplayListMultithread::begin_ordered() {
  const LM_Handle<LM_Renderer> renderer =
      m_pDisplayList == nullptr ? nullptr : m_pDisplayList->m_pRenderer;
  if (!renderer) return true;
  if (renderer->options.is_for_one_thread) return false;
  LM_Ordered_Drawing* const ordered = renderer->ordered_drawing();
  if (ordered == nullptr) return true;
  if (!ordered->begin(m_cThreads, {this, &draw_piece})) return false;
  m_pOrdered = ordered;
  m_pOrderedRenderer = renderer;
  return true;
}

void DisplayListMultithread::end_ordered() {
  if (m_pOrdered != nullptr) m_pOrdered->end();
  m_pOrdered = nullptr;
  m_pOrderedRenderer = nullptr;
  m_hasCollected = false;
}

bool DisplayListMultithread::begin_in_turn() {
  if (m_pOrdered != nullptr && m_pOrdered->is_full(m_cThreads)) release_queues();
  if (m_pOrdered == nullptr || m_pDisplayList->m_pRenderer != m_pOrderedRenderer) return false;
  m_pOrdered->begin_group(m_cThreads, m_nextNumber++);
  m_hasCollected = true;
  m_pLentCollector = m_pOrdered->collector(m_cThreads);
  m_pDisplayList->m_pRenderer = m_pLentCollector;
  return true;
}

void DisplayListMultithread::take_back_renderer() {
  if (!m_pLentCollector) return;
  LM_Handle<LM_Renderer>& renderer = m_pDisplayList->m_pRenderer;
  if (renderer == m_pLentCollector) renderer = m_pOrderedRenderer;
  m_pLentCollector = nullptr;
}

void DisplayListMultithread::follow_renderer() {
  if (m_pOrdered == nullptr || m_pDisplayList->m_pRenderer == m_pOrderedRenderer) return;
  // The client has gone on to another renderer. The one before gets what the
  // calling thread drew for it.
  draw_bands(std::numeric_limits<std::uint64_t>::max());
  end_ordered();
  begin_ordered();
}

void DisplayListMultithread::line_up() {
  std::int32_t places[kMaxThreads] = {};
  std::int32_t count = 0;
  for (;;) {
    std::int32_t next = -1;
    for (std::int32_t i = 0; i < m_cThreads; ++i) {
      if (places[i] == m_queueCount[i]) continue;
      if (next < 0 || m_number[i][places[i]] < m_number[next][places[next]]) next = i;
    }
    if (next < 0) break;
    m_turns[count++] = {static_cast<std::int16_t>(next), static_cast<std::int16_t>(places[next]++)};
  }
  m_turnCount = count;
  for (std::int32_t i = 0; i < m_cThreads; ++i) {
    const auto is_own = [i](const Turn& turn) { return turn.queue == i; };
    m_nextTurn[i] =
        static_cast<std::int32_t>(std::find_if(m_turns, m_turns + count, is_own) - m_turns);
  }
}

std::int32_t DisplayListMultithread::turn_after(std::int32_t turn) const {
  std::int32_t next = turn + 1;
  while (next < m_turnCount && m_turns[next].queue != m_turns[turn].queue) ++next;
  return next;
}

void DisplayListMultithread::draw_turns(std::int32_t index) {
  std::int32_t next = m_nextTurn[index];  // what others look at lies side by side
  for (; next < m_turnCount && !m_pOrdered->is_full(index); next = turn_after(next)) {
    if (m_mayPutOff && put_off(index, next)) continue;
    const Turn& turn = m_turns[next];
    m_pOrdered->begin_group(index, number(turn));
    draw_group(turn.queue, turn.place, m_contexts[index]);
  }
  m_nextTurn[index] = next;
}

bool DisplayListMultithread::put_off(std::int32_t index, std::int32_t place) {
  const Turn& turn = m_turns[place];
  DeviceRows rows{};
  return find_light_rows(*m_queue[turn.queue][turn.place], m_contexts[index], rows) &&
         m_pOrdered->put_off(index, number(turn), static_cast<std::uint64_t>(place), rows.first,
                             rows.last);
}

void DisplayListMultithread::draw_piece(void* context, std::int32_t thread, std::uint64_t piece,
                                        const LM_Handle<LM_Renderer>& renderer) {
  auto& self = *static_cast<DisplayListMultithread*>(context);
  DisplayList& list = self.m_contexts[thread];
  if (list.m_pRenderer != renderer) list.m_pRenderer = renderer;
  const Turn& turn = self.m_turns[piece];
  self.draw_group(turn.queue, turn.place, list);
}

bool DisplayListMultithread::has_more() const {
  return std::any_of(m_nextTurn, m_nextTurn + m_cThreads,
                     [this](std::int32_t turn) { return turn < m_turnCount; });
}

std::uint64_t DisplayListMultithread::next_number() const {
  std::uint64_t next = std::numeric_limits<std::uint64_t>::max();
  for (std::int32_t i = 0; i < m_cThreads; ++i) {
    if (m_nextTurn[i] < m_turnCount) next = std::min(next, number(m_turns[m_nextTurn[i]]));
  }
  return next;
}

void DisplayListMultithread::draw_bands(std::uint64_t limit) {
  m_pOrdered->start_bands(limit);
  lend_contexts();
  have_all(Task::draw_bands);
  m_pOrdered->finish_bands();
}

bool DisplayListMultithread::pays_alone() const {
  if (m_hasCollected) return false;
  if (m_cThreads == 1 || !m_mayPutOff) return m_cThreads == 1;
  // Light groups are read twice, to find the bands and to draw them: that takes all
  // the time that a second worker saves.
  if (m_turnCount > kFewGroups && m_cThreads > 2) return false;
  const std::int32_t step = (m_turnCount + kFewGroups - 1) / kFewGroups;
  for (std::int32_t i = 0; i < m_turnCount; i += step) {
    DeviceRows rows{};
    const Turn& turn = m_turns[i];
    if (!find_light_rows(*m_queue[turn.queue][turn.place], *m_pDisplayList, rows)) return false;
  }
  return true;
}

void DisplayListMultithread::draw_alone() {
  m_contexts[0].draw_for(*m_pDisplayList, m_privateRenditions[0]);
  for (std::int32_t i = 0; i < m_turnCount; ++i) {
    draw_group(m_turns[i].queue, m_turns[i].place, m_contexts[0]);
  }
}

void DisplayListMultithread::draw_in_order() {
  m_mayPutOff = m_pOrdered->can_put_off(m_pDisplayList->m_rendition);
  line_up();
  if (pays_alone()) return draw_alone();
  do {
    lend_contexts();
    have_all(Task::draw_turns);
    draw_bands(next_number());
  } while (has_more());
}

}  // namespace DL
