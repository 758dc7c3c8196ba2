// The signals of this host.
#pragma once

#include "host/allocator.h"
#include "host/trace.h"
#include "kiln/signal.h"

#include <string>
#include <vector>

namespace Refhost {

// A signal that tells the trace who connects to it.
template <class Arg>
class HostSignal final : public Kiln::Signal<Arg> {
 public:
  // `kind` and `owner` are what the trace says of a connection: "selection-change" of "Rotate180".
  HostSignal(const Trace& eventTrace, std::string signalKind, std::u16string ownerName)
      : trace(eventTrace),
        kind(std::move(signalKind)),
        owner(std::move(ownerName)) {}

  void attach(Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>> slot) override {
    trace.record(
        {"connect", {{"signal", Refhost::TraceValue(std::u16string(kind.begin(), kind.end()))}, {"of", owner}}});
    slots.push_back(std::move(slot));
  }

  Kiln::Allocator& allocator() noexcept override { return heap(); }

  // Calls the slots in the order of their connection; those connected meanwhile wait for the next time. The signal may
  // be destroyed by one of them.
  void fire(Arg argument) {
    const Kiln::SmartPtr<HostSignal> self(this);
    for (std::size_t i = 0, count = slots.size(); i < count; ++i) {
      const auto slot = slots[i];
      slot->call(argument);
    }
  }

 private:
  const Trace& trace;
  std::string kind;
  std::u16string owner;
  std::vector<Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>>> slots;
};

}  // namespace Refhost
