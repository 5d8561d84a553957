#include <sys/mman.h>

#include <cstdint>

#include "lumen/heap/system_pages_p.h"

namespace lumen {
namespace {

void* map(std::size_t size) noexcept {
  void* pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return pages == MAP_FAILED ? nullptr : pages;
}

std::size_t misalignment(const void* pages, std::size_t alignment) noexcept {
  return reinterpret_cast<std::uintptr_t>(pages) % alignment;
}

void* map_aligned(std::size_t size, std::size_t alignment) noexcept {
  // The system places regions side by side, so that after the first one an
  // exact request is aligned as it comes.
  void* pages = map(size);
  if (pages == nullptr || misalignment(pages, alignment) == 0) return pages;
  munmap(pages, size);

  if (size > SIZE_MAX - alignment) return nullptr;
  char* wide = static_cast<char*>(map(size + alignment));
  if (wide == nullptr) return nullptr;
  const std::size_t before = (alignment - misalignment(wide, alignment)) % alignment;
  if (before != 0) munmap(wide, before);
  munmap(wide + before + size, alignment - before);
  return wide + before;
}

}  // namespace

void* take_pages(std::size_t size) noexcept {
  return map_aligned(size, slab_size);
}

void* take_huge_page() noexcept {
  void* page = map_aligned(huge_page_size, huge_page_size);
  // Where the system has no huge pages, these are small ones.
  if (page != nullptr) static_cast<void>(madvise(page, huge_page_size, MADV_HUGEPAGE));
  return page;
}

void return_pages(void* pages, std::size_t size) noexcept {
  munmap(pages, size);
}

}  // namespace lumen
