#include "displaylist/core/class_change.h"

namespace DL::class_change {

[[gnu::noinline]] void set_operation_table(void* object, OperationTable table) noexcept {
  std::memcpy(object, &table, sizeof table);
#if defined(__GNUC__)
  // The object's table is memory that may have changed, whatever was known of it.
  asm volatile("" : : "r"(object) : "memory");
#endif
}

}  // namespace DL::class_change
