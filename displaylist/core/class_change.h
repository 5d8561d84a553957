#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "displaylist/platform/export.h"

/// Objects that change their class in place.
///
/// A group becomes open, closed, inner or hidden, a drawable hidden or
/// palettized, while parents, siblings and iterators go on holding pointers to
/// it. The change replaces the object's table of virtual operations by that of
/// another class with the same fields; no memory moves and no field changes.
///
/// Why the object's own table and not a second one held as a field: a field
/// would cost 8 bytes in each of millions of objects and a second indirection
/// in each call, and clients could not override operations in ordinary C++.
/// What makes it hold:
///  - every class taking part is polymorphic without multiple inheritance, so
///    the table's address is the object's first word on the ABIs in use;
///  - both classes derive from one another or from the class that the callers'
///    pointers name, so that run-time checks of the table agree;
///  - the store happens in a function that no compiler looks through, so that
///    none goes on with the class that it saw before.
/// What it asks of clients: an object that changes its class comes from `new`
/// and is called through a pointer to a class that both its classes derive
/// from. Calls on a named object (a local variable, a member) are bound when
/// compiled. Clang's -fstrict-vtable-pointers (off by default) breaks it.
namespace DL::class_change {

/// Constructs an object whose fields are left to be filled by a stream reader.
struct Unfilled {
  explicit constexpr Unfilled() = default;
};
inline constexpr Unfilled kUnfilled{};

/// The address of a class's table of virtual operations.
using OperationTable = const void*;

/// Replaces the object's table of operations.
DISPLAYLIST_API void set_operation_table(void* object, OperationTable table) noexcept;

/// The object's table of operations.
[[nodiscard]] inline OperationTable table_of(const void* object) {
  OperationTable table;
  std::memcpy(&table, object, sizeof table);
  return table;
}

/// The table of operations of T's objects.
template <class T>
[[nodiscard]] OperationTable operation_table() {
  static const OperationTable table = [] {
    const T prototype(kUnfilled);
    return table_of(&prototype);
  }();
  return table;
}

/// Turns the object into a T. `From` is the class that the pointer names.
template <class T, class From>
void become(From* object) {
  static_assert(std::is_polymorphic_v<T> && std::is_polymorphic_v<From>);
  static_assert(sizeof(T) == sizeof(From) || std::is_base_of_v<From, T>);
  set_operation_table(object, operation_table<T>());
}

}  // namespace DL::class_change
