// Objects that plug-ins hold references to.
#pragma once

#include "host/allocator.h"
#include "kiln/exception.h"
#include "kiln/ref_count.h"

#include <new>
#include <string_view>
#include <utility>

namespace Refhost {

// A new counted object on the heap of this host. Throws std::bad_alloc.
template <class T, class... Arguments>
Kiln::SmartPtr<T> make(Arguments&&... arguments) {
  T* object = new (heap()) T(std::forward<Arguments>(arguments)...);
  if (object == nullptr) throw std::bad_alloc();
  return Kiln::SmartPtr<T>(object);
}

// The exception that host operations throw to plug-ins: one sentence.
inline Kiln::Exception failure(std::string_view sentence) { return {heap(), sentence}; }

}  // namespace Refhost
