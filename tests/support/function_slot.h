// Signal handlers for tests.
#pragma once

#include "host/object.h"
#include "kiln/signal.h"

#include <functional>

namespace Testing {

// Calls a function with each argument.
template <class Arg>
class FunctionSlot final : public Kiln::ArgumentSlot<Arg> {
 public:
  FunctionSlot(Kiln::SignalTarget& target, std::function<void(Arg)> handler)
      : Kiln::ArgumentSlot<Arg>(target),
        called(std::move(handler)) {}
  void call(Arg argument) override { called(argument); }

 private:
  std::function<void(Arg)> called;
};

template <class Arg>
void follow(Kiln::SignalTarget& target, const Kiln::SmartPtr<Kiln::Signal<Arg>>& signal,
            std::function<void(Arg)> handler) {
  signal->attach(Refhost::make<FunctionSlot<Arg>>(target, std::move(handler)));
}

}  // namespace Testing
