#include <sys/mman.h>

#include <cstdint>

#include "lumen/heap/system_pages_p.h"

namespace lumen {
namespace {

void* map(std::size_t size, int flags = 0) noexcept {
  void* pages =
      mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | flags, -1, 0);
  return pages == MAP_FAILED ? nullptr : pages;
}

std::size_t misalignment(const void* pages) noexcept {
  return reinterpret_cast<std::uintptr_t>(pages) % slab_size;
}

}  // namespace

void* take_pages(std::size_t size, bool at_once) noexcept {
  // The system places regions side by side, so that after the first one an
  // exact request is aligned as it comes.
  void* pages = map(size, at_once ? MAP_POPULATE : 0);
  if (pages == nullptr || misalignment(pages) == 0) return pages;
  munmap(pages, size);

  if (size > SIZE_MAX - slab_size) return nullptr;
  char* wide = static_cast<char*>(map(size + slab_size));
  if (wide == nullptr) return nullptr;
  const std::size_t before = (slab_size - misalignment(wide)) % slab_size;
  if (before != 0) munmap(wide, before);
  munmap(wide + before + size, slab_size - before);
  return wide + before;
}

void return_pages(void* pages, std::size_t size) noexcept {
  munmap(pages, size);
}

}  // namespace lumen
