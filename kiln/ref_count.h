// Reference-counted objects and smart pointers to them.
//
//   1. An object is created with a count of 0: SmartPtr<T> object(new (allocator) T(...));
//   2. every SmartPtr to it counts 1;
//   3. the last one to be released destroys it, through the allocator that it came from.
//
// An object is asked by name whether it has an interface, and never by dynamic_cast, which does not work between
// libraries that keep their symbols to themselves, or have different C++ runtimes.
#pragma once

#include "kiln/text.h"

#include <utility>

namespace Kiln {

class RefCount : public virtual Base {
 public:
  void addRef() noexcept { ++count; }

  // Drops one reference; destroys the object with the last one.
  void release() noexcept {
    if (--count == 0) delete this;
  }

  std::int32_t references() const noexcept { return count; }

  // The object's interface of that name, as a pointer to it; null when it has none. It lives as long as the object, and
  // counts no reference. Every interface that can be asked for has its name as `interfaceName`; smartCast asks for it.
  // Later versions of the contract add interfaces, never operations. [plug-in, host]
  virtual void* queryInterface(StringView) noexcept { return nullptr; }

 private:
  std::int32_t count = 0;
};

// A strong reference to a counted object, or null. Its layout is one pointer.
template <class T>
class SmartPtr {
 public:
  SmartPtr() noexcept = default;
  SmartPtr(std::nullptr_t) noexcept {}
  SmartPtr(T* held) noexcept : object(held) { hold(); }
  SmartPtr(const SmartPtr& other) noexcept : object(other.object) { hold(); }
  SmartPtr(SmartPtr&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
  template <class U>
  SmartPtr(const SmartPtr<U>& other) noexcept : object(other.get()) {
    hold();
  }
  ~SmartPtr() { drop(); }

  SmartPtr& operator=(SmartPtr other) noexcept {
    std::swap(object, other.object);
    return *this;
  }

  void reset() noexcept { *this = SmartPtr(); }

  T* get() const noexcept { return object; }
  T* operator->() const noexcept { return object; }
  T& operator*() const noexcept { return *object; }
  explicit operator bool() const noexcept { return object != nullptr; }
  friend bool operator==(const SmartPtr& a, const SmartPtr& b) noexcept { return a.object == b.object; }

 private:
  void hold() const noexcept {
    if (object != nullptr) object->addRef();
  }
  void drop() const noexcept {
    if (object != nullptr) object->release();
  }

  T* object = nullptr;
};

// The same object as a T; null when it has no such interface, or when `from` is null.
template <class T, class U>
SmartPtr<T> smartCast(const SmartPtr<U>& from) noexcept {
  if (!from) return nullptr;
  return SmartPtr<T>(static_cast<T*>(from->queryInterface(T::interfaceName)));
}

}  // namespace Kiln
