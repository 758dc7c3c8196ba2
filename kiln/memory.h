// Memory shared between a host and a plug-in.
//
// A host and a plug-in may be linked with different C runtimes, so whatever one of them may free for the other comes
// from the host's allocator and carries a pointer to it: objects in a word in front of them (Base), texts in their
// block (text.h). Nothing here has static or namespace-scope state: it would exist once in each module.
//
// The comments on operations name the caller and the state in which it may call:
//
//   [plug-in]         the plug-in calls, from its construction on
//   [plug-in, ready]  the plug-in calls, from the GUI's ready signal on
//   [host]            the host calls
//
// For every operation:
//
//   - It is called on the host's UI thread only, and so are a plug-in's handlers; nothing here takes a lock. Operations
//     may be called from inside one another: a handler may submit, load a dialog and run it.
//   - A pointer is null, as an argument or as a result, only where its comment says so. An operation of the host that
//     is called without what it needs throws Exception: "CLASS::OPERATION was called without ARGUMENT." A null result
//     means what the comment says, and never a failure that has a reason: those are thrown.
//   - Texts may be empty, as arguments and as results, unless the comment says otherwise.
//   - Every operation of the host may throw std::bad_alloc, and what it is said to throw; those that are `noexcept` do
//     not. What a handler throws passes through the host's operation that has fired its signal.
//   - Objects that a plug-in passes to the host are ones that the host has made, except for slots and the plug-in
//     itself. The host may refuse others by an Exception, or do without them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

namespace Kiln {

// Implemented by the host; outlives every object allocated from it.
class Allocator {
 public:
  // Memory for `bytes` bytes, aligned for any fundamental type; null when out of memory. Never throws. [plug-in]
  virtual void* allocate(std::size_t bytes) noexcept = 0;

  // Frees memory from allocate; null is allowed and does nothing. [plug-in]
  virtual void deallocate(void* memory) noexcept = 0;

 protected:
  Allocator() = default;
  Allocator(const Allocator&) = default;
  Allocator& operator=(const Allocator&) = default;
  ~Allocator() = default;
};

// The root of every class with a virtual destructor that crosses the boundary. Created on the heap with `new
// (allocator) T(...)`, which returns null when out of memory; such objects free themselves through the same allocator,
// whichever module calls the last `release`.
class Base {
 public:
  virtual ~Base() = default;
  Base() = default;
  Base(const Base&) = delete;
  Base& operator=(const Base&) = delete;

  static void* operator new(std::size_t bytes, Allocator& allocator) noexcept {
    auto* block = static_cast<std::byte*>(allocator.allocate(bytes + prefixBytes));
    if (block == nullptr) return nullptr;
    new (block)(Allocator*)(&allocator);
    return block + prefixBytes;
  }
  static void operator delete(void* object) noexcept {
    if (object == nullptr) return;
    auto* block = static_cast<std::byte*>(object) - prefixBytes;
    (*reinterpret_cast<Allocator**>(block))->deallocate(block);
  }
  // Runs when a constructor throws.
  static void operator delete(void* object, Allocator&) noexcept { operator delete(object); }

 private:
  // Keeps the object as aligned as the block is.
  static constexpr std::size_t prefixBytes = alignof(std::max_align_t);
};

}  // namespace Kiln
