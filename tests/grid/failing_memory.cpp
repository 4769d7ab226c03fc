#include "failing_memory.h"

#include <cstdlib>
#include <new>
#include <optional>

namespace {

thread_local std::optional<int> granted;

void* Allocate(std::size_t size) noexcept {
  if (granted && (*granted)-- <= 0) return nullptr;
  return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

void* operator new(std::size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
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

namespace quillgate {

FailingMemory::FailingMemory(int allocations) {
  granted = allocations;
}

FailingMemory::~FailingMemory() {
  granted.reset();
}

}  // namespace quillgate
