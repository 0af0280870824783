#include "tests/support/CountedAllocations.h"

#include <cstdlib>
#include <new>

// Default visibility, so that the shared library finds these too: the dynamic linker asks the
// program first. All forms but the aligned ones, so that sanitizers see matching pairs.
#define COUNTED __attribute__((visibility("default")))

namespace {

thread_local std::size_t allocations = 0;

void* allocate(std::size_t size) noexcept {
  ++allocations;
  return std::malloc(size > 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
  if (void* memory = allocate(size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

std::size_t sentrel::allocationsSoFar() noexcept {
  return allocations;
}

COUNTED void* operator new(std::size_t size) {
  return allocateOrThrow(size);
}

COUNTED void* operator new[](std::size_t size) {
  return allocateOrThrow(size);
}

COUNTED void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}

COUNTED void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}

COUNTED void operator delete(void* memory) noexcept {
  std::free(memory);
}

COUNTED void operator delete[](void* memory) noexcept {
  std::free(memory);
}

COUNTED void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

COUNTED void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

COUNTED void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}

COUNTED void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
