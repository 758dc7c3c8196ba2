// Objects of this host that plug-ins hold.
#pragma once

#include "host/allocator.h"
#include "kiln/exception.h"
#include "kiln/ref_count.h"

#include <new>
#include <string_view>
#include <utility>

namespace Refhost {

// A new counted object on the lent heap. Throws std::bad_alloc when memory is out.
template <class T, class... Arguments>
Kiln::SmartPtr<T> make(Arguments&&... arguments) {
  T* object = new (heap()) T(std::forward<Arguments>(arguments)...);
  if (object == nullptr) throw std::bad_alloc();
  return Kiln::SmartPtr<T>(object);
}

// What a host operation throws at a plug-in: one sentence.
inline Kiln::Exception failure(std::string_view sentence) { return {heap(), sentence}; }

}  // namespace Refhost
