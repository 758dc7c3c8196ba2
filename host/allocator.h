// The allocator that this host provides to plug-ins.
#pragma once

#include "kiln/memory.h"
#include "kiln/text.h"

#include <string_view>

namespace Refhost {

// The C heap with a block counter, so that tests can detect leaks in plug-ins.
class HeapAllocator final : public Kiln::Allocator {
 public:
  void* allocate(std::size_t bytes) noexcept override;
  void deallocate(void* memory) noexcept override;

  // Blocks allocated and not yet freed.
  long blocks() const noexcept { return lent; }

  // Makes allocate return null after `count` more blocks; -1 for never. For tests.
  void failAfter(long count) noexcept { left = count; }

 private:
  long lent = 0;
  long left = -1;
};

// The single allocator of this process.
HeapAllocator& heap() noexcept;

// Convert to texts that plug-ins accept.
Kiln::WString text(std::u16string_view wide);
Kiln::String text(std::string_view narrow);

}  // namespace Refhost
