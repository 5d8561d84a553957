#include "bench/own_measures.h"

namespace bench {

void run_own_measures(const Settings& settings, Report& report) {
  if (settings.wants("editing")) measure_editing(settings, report);
  if (settings.wants("storing")) measure_storing(settings, report);
  if (settings.wants("interrupts")) measure_interrupts(settings, report);
  if (settings.wants("threads")) measure_threads(settings, report);
  if (settings.wants("classes")) measure_classes(settings, report);
}

}  // namespace bench
