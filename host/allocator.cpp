#include "host/allocator.h"

#include <cstdlib>

namespace Refhost {

void* HeapAllocator::allocate(std::size_t bytes) noexcept {
  if (left == 0) return nullptr;
  void* memory = std::malloc(bytes);
  if (memory == nullptr) return nullptr;
  if (left > 0) --left;
  ++lent;
  return memory;
}

void HeapAllocator::deallocate(void* memory) noexcept {
  if (memory == nullptr) return;
  --lent;
  std::free(memory);
}

HeapAllocator& heap() noexcept {
  static HeapAllocator allocator;
  return allocator;
}

Kiln::WString text(std::u16string_view wide) { return {heap(), wide}; }
Kiln::String text(std::string_view narrow) { return {heap(), narrow}; }

}  // namespace Refhost
