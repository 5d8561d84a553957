#pragma once

#include <cstdint>
#include <utility>

#include "displaylist/core/display_list.h"

/// Interrupt tests of a list that count their calls and stop at a given one.
class InterruptCounter {
 public:
  static constexpr int kNever = 0;

  explicit InterruptCounter(DL::DisplayList& list) : m_list(list) {
    list.m_pfnInterrupt = &poll;
    list.m_pInterruptContext = this;
    list.m_pfnSelInterrupt = &poll_selection;
    list.m_pSelInterruptContext = this;
  }

  int polls = 0;
  int selection_polls = 0;
  int stop_at = kNever;  ///< the poll, of either kind, that asks to stop
  bool foreign_list = false;

 private:
  static bool poll(void* context, DL::DisplayList* list) {
    auto* self = static_cast<InterruptCounter*>(context);
    return self->goes_on(++self->polls, list);
  }
  static bool poll_selection(void* context, DL::DisplayList* list) {
    auto* self = static_cast<InterruptCounter*>(context);
    return self->goes_on(++self->selection_polls, list);
  }
  bool goes_on(int number, const DL::DisplayList* list) {
    foreign_list = foreign_list || list != &m_list;
    return number != stop_at;
  }

  DL::DisplayList& m_list;
};

/// Sets how many visits lie between two polls, for its own lifetime.
class PollEvery {
 public:
  explicit PollEvery(std::int32_t visits)
      : m_drawing(std::exchange(DL::DisplayList::m_cInterruptCount, visits)),
        m_selection(std::exchange(DL::DisplayList::m_cSelInterruptCount, visits)) {}
  PollEvery(const PollEvery&) = delete;
  PollEvery& operator=(const PollEvery&) = delete;
  ~PollEvery() {
    DL::DisplayList::m_cInterruptCount = m_drawing;
    DL::DisplayList::m_cSelInterruptCount = m_selection;
  }

 private:
  std::int32_t m_drawing;
  std::int32_t m_selection;
};
