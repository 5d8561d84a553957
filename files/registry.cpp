#include "files/registry_p.h"

#include <cstring>
#include <unordered_map>
#include <utility>

#include "displaylist/catalogue.h"
#include "displaylist/core/tags.h"
#include "files/layout_p.h"
#include "files/stored_p.h"

namespace files {
namespace {

using DL::class_change::operation_table;
using DL::class_change::OperationTable;

/// Named, since records of others lead to them.
constexpr std::uint32_t kTextTag = 0x4000001A;
constexpr std::uint32_t kStretchedTextTag = 0x4000001B;

/// The classes with their tags: never renumbered, files outlive programs.
#define FILES_CLASSES(X)                    \
  X(DL::DLColorizedDot, 0x40000010)         \
  X(DL::DLImage, 0x40000011)                \
  X(DL::DLGouraudPolyline, 0x40000012)      \
  X(DL::DLPolygon, 0x40000013)              \
  X(DL::DLGouraudPolytriangle, 0x40000014)  \
  X(DL::DLTexturedPolytriangle, 0x40000015) \
  X(DL::DLPolymarker, 0x40000016)           \
  X(DL::DLRowOfDots, 0x40000017)            \
  X(DL::DLColorizedEllipse, 0x40000018)     \
  X(DL::DrawableDisplayList, 0x40000019)    \
  X(DL::DLText, kTextTag)                   \
  X(StretchedText, kStretchedTextTag)

/// The tables that objects of a class get to write its record.
struct Form {
  OperationTable plain;
  OperationTable palettized;
};

template <class T, std::uint32_t Tag>
Form form_of_class() {
  const OperationTable palettized = operation_table<Stored<T, DL::PalettizedDrawable<T>, Tag>>();
  if constexpr (Record<T>::kHasRendition) return {palettized, palettized};
  return {operation_table<Stored<T, T, Tag>>(), palettized};
}

/// A StretchedText is palettized as it is.
template <>
Form form_of_class<StretchedText, kStretchedTextTag>() {
  const OperationTable table =
      operation_table<Stored<StretchedText, StretchedText, kStretchedTextTag>>();
  return {table, table};
}

const Form* form_of(std::uint32_t record_tag) {
  switch (record_tag) {
#define FILES_FORM(Class, Tag)                            \
  case Tag: {                                             \
    static const Form form = form_of_class<Class, Tag>(); \
    return &form;                                         \
  }
    FILES_CLASSES(FILES_FORM)
#undef FILES_FORM
    default:
      return nullptr;
  }
}

/// What is known of the exact class of an object.
using KnownTables = std::unordered_map<OperationTable, const Form*>;

template <class T>
void add_variants(KnownTables& tables, const Form* form) {
  tables[operation_table<T>()] = form;
  tables[operation_table<DL::HiddenDrawable<T>>()] = form;
}

/// Null for the classes that write records of their own.
KnownTables make_known_tables() {
  KnownTables tables;
#define FILES_ADD_OWN(Class, Tag)           \
  add_variants<DL::Class>(tables, nullptr); \
  add_variants<DL::PalettizedDrawable<DL::Class>>(tables, nullptr);
  DL_STORED_CLASSES(FILES_ADD_OWN)
#undef FILES_ADD_OWN
  add_variants<DL::DLPolytriangleWithNoBorder>(tables, nullptr);
#define FILES_ADD(Class, Tag) add_variants<Class>(tables, form_of(Tag));
  FILES_CLASSES(FILES_ADD)
#undef FILES_ADD
  add_variants<DL::PalettizedDrawable<DL::DLText>>(tables, form_of(kTextTag));
  return tables;
}

/// The form of the class with a type token that writes nothing itself.
const Form* form_of_type(const void* type) {
#define FILES_TYPE(Class, Tag) \
  if (type == Class::my_type()) return form_of(Tag);
  FILES_CLASSES(FILES_TYPE)
#undef FILES_TYPE
  return nullptr;
}

/// Notes the first word of a record.
class FirstWord final : public ZtFsStream {
 public:
  void write(const void* buffer, std::int32_t size) override {
    if (!m_is_first) return;
    m_is_first = false;
    if (size == static_cast<std::int32_t>(sizeof m_word))
      std::memcpy(&m_word, buffer, sizeof m_word);
  }
  void read(void*, std::int32_t* size) override { *size = 0; }

  /// The tag of a class; 0 when there is no record that begins with one.
  [[nodiscard]] std::uint32_t tag() const {
    return (m_word & DL::tag::kClassBits) == 0 ? 0 : m_word;
  }

 private:
  bool m_is_first = true;
  std::uint32_t m_word = 0;
};

/// Takes a drawable out of its chain for its own lifetime.
class AloneForAWhile {
 public:
  explicit AloneForAWhile(DL::Drawable& drawable)
      : m_drawable(drawable), m_next(std::exchange(drawable.m_pNext, nullptr)) {}
  AloneForAWhile(const AloneForAWhile&) = delete;
  AloneForAWhile& operator=(const AloneForAWhile&) = delete;
  ~AloneForAWhile() { m_drawable.m_pNext = m_next; }

 private:
  DL::Drawable& m_drawable;
  DL::Drawable* m_next;
};

std::uint32_t own_tag_of(DL::Drawable& drawable, DL::DisplayList& list) {
  FirstWord stream;
  const AloneForAWhile alone(drawable);
  drawable.serialize_out(&stream, list);
  return stream.tag();
}

/// The type of the class that a reader makes for the tag; null for tags that are
/// not the library's.
const void* type_of_tag(std::uint32_t tag) {
  switch (tag) {
#define FILES_TYPE(Class, Tag) \
  case Tag:                    \
    return DL::Class::my_type();
    DL_STORED_CLASSES(FILES_TYPE)
    DL_FACTORY_CLASSES(FILES_TYPE)
#undef FILES_TYPE
    case StretchedText::kTag:
      return StretchedText::my_type();
    default:
      return nullptr;
  }
}

/// Whether drawables of the type never come back with a rendition.
bool has_no_palettized_variant(const void* type) {
#define FILES_IS(Class) \
  if (type == DL::Class::my_type()) return true;
  DL_PLAIN_ONLY_CLASSES(FILES_IS)
#undef FILES_IS
  return false;
}

Manner in_form(const DL::Drawable& drawable, const Form* form) {
  return {Way::form, drawable.is_palettized() ? form->palettized : form->plain};
}

/// How an object of a class that is not known here is written, which begins its
/// own record with the tag.
Manner manner_of_client_class(const DL::Drawable& drawable, std::uint32_t tag) {
  const void* type = drawable.type();
  const void* type_read = type_of_tag(tag);
  const Form* form = nullptr;
  if (tag == 0 || type_read == DL::DLText::my_type()) form = form_of_type(type);
  if (tag == StretchedText::kTag) form = form_of(kStretchedTextTag);
  const bool is_taken = type_read != nullptr || (tag & layout::kOwnTagBits) == layout::kOwnTags;
  if (!is_taken && tag != 0) return {};
  // It comes back as the library's class of its type, if it has the record of that.
  if (form == nullptr && type_read == nullptr) return {Way::nothing, nullptr};
  if (type_read != nullptr && type_read != type) return {Way::nothing, nullptr};
  if (drawable.is_palettized() && has_no_palettized_variant(type)) {
    return {Way::unpalettizable, nullptr};
  }
  return form == nullptr ? Manner{} : in_form(drawable, form);
}

}  // namespace

OperationTable table_of(const DL::Drawable& drawable) {
  OperationTable table = nullptr;
  std::memcpy(&table, static_cast<const void*>(&drawable), sizeof table);
  return table;
}

Manner manner_of(DL::Drawable& drawable, DL::DisplayList& list) {
  static const KnownTables known = make_known_tables();
  const auto found = known.find(table_of(drawable));
  if (found != known.end()) {
    return found->second == nullptr ? Manner{} : in_form(drawable, found->second);
  }
  return manner_of_client_class(drawable, own_tag_of(drawable, list));
}

Maker maker_of(std::uint32_t tag) {
  switch (tag) {
#define FILES_MAKE(Class, Tag)                                                  \
  case Tag:                                                                     \
    return [](LumenHeap* heap) -> DL::Drawable* {                               \
      return new (heap) Stored<Class, Class, Tag>(DL::class_change::kUnfilled); \
    };
    FILES_CLASSES(FILES_MAKE)
#undef FILES_MAKE
#define FILES_MAKE(Class, Tag)                                  \
  case Tag:                                                     \
    return [](LumenHeap* heap) -> DL::Drawable* {               \
      return new (heap) DL::Class(DL::class_change::kUnfilled); \
    };
    DL_FACTORY_CLASSES(FILES_MAKE)
#undef FILES_MAKE
    case StretchedText::kTag:
      return [](LumenHeap* heap) -> DL::Drawable* {
        return new (heap) StretchedText(DL::class_change::kUnfilled);
      };
    default:
      return nullptr;
  }
}

}  // namespace files
