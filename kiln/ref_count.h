// Reference-counted objects and smart pointers to them.
//
//   1. An object is created with a count of 0: SmartPtr<T> object(new (allocator) T(...));
//   2. every SmartPtr to it counts 1;
//   3. the last one to be released destroys it, through the allocator that it came from.
#pragma once

#include "kiln/memory.h"

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

// The same object as a T; empty when it is not a T, or when `from` is empty.
template <class T, class U>
SmartPtr<T> smartCast(const SmartPtr<U>& from) noexcept {
  return SmartPtr<T>(dynamic_cast<T*>(from.get()));
}

}  // namespace Kiln
