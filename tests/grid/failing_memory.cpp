#include "failing_memory.h"

#include <cstdlib>
#include <new>

using quillgate::grantedAllocations;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  const bool isLast = grantedAllocations == 0;
  if (grantedAllocations) --*grantedAllocations;
  if (isLast) grantedAllocations.reset();
  return isLast ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void* operator new(std::size_t size) {
  if (void* memory = operator new(size, std::nothrow)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
