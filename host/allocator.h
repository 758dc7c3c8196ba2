// The memory that this host lends to plug-ins.
#pragma once

#include "kiln/memory.h"
#include "kiln/text.h"

#include <string_view>

namespace Refhost {

// The C heap, counted, so that a test can tell whether a plug-in gave everything back.
class HeapAllocator final : public Kiln::Allocator {
 public:
  void* allocate(std::size_t bytes) noexcept override;
  void deallocate(void* memory) noexcept override;

  // Blocks lent and not given back.
  long blocks() const noexcept { return lent; }

  // From now on allocate gives null after `count` more blocks; -1 for never. For tests.
  void failAfter(long count) noexcept { left = count; }

 private:
  long lent = 0;
  long left = -1;
};

// The one allocator of this process.
HeapAllocator& heap() noexcept;

// Texts as plug-ins take them.
Kiln::WString text(std::u16string_view wide);
Kiln::String text(std::string_view narrow);

}  // namespace Refhost
