// Objects that plug-ins hold references to.
#pragma once

#include "host/allocator.h"
#include "kiln/exception.h"
#include "kiln/ref_count.h"

#include <new>
#include <string>
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

// Marks what operations of this host throw: the host knows it again when a plug-in has let it pass.
class HostsOwn {
 public:
  virtual ~HostsOwn() = default;
  virtual const char* sentence() const noexcept = 0;
};

template <class Base>
class Own final : public Base, public HostsOwn {
 public:
  using Base::Base;
  const char* sentence() const noexcept override { return this->what(); }
};

// The exception that host operations throw to plug-ins: one sentence.
inline Own<Kiln::Exception> failure(std::string_view sentence) { return {heap(), sentence}; }

// The same for an operation that a plug-in must not call in this way: a failure of the plug-in.
inline Kiln::Exception misuse(std::string_view sentence) { return {heap(), sentence}; }

// Throws Exception when what a host operation was given is null: `operation` is "ListData::insert", and
// `argument` is "an item".
template <class T>
void demandGiven(const Kiln::SmartPtr<T>& object, std::string_view operation, std::string_view argument) {
  if (!object) throw misuse(std::string(operation).append(" was called without ").append(argument).append("."));
}

// The same for an object of this host's class T, which a plug-in hands back. Throws Exception when the host has not
// made it, too.
template <class T, class U>
Kiln::SmartPtr<T> givenBack(const Kiln::SmartPtr<U>& object, std::string_view operation, std::string_view argument) {
  demandGiven(object, operation, argument);
  auto known = Kiln::smartCast<T>(object);
  if (!known)
    throw misuse(
        std::string(operation).append(" was called with ").append(argument).append(" that this host did not make."));
  return known;
}

}  // namespace Refhost
