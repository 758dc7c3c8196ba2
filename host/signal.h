// The signals of this host.
#pragma once

#include "formats/text.h"
#include "host/object.h"
#include "host/trace.h"
#include "kiln/signal.h"

#include <string>
#include <vector>

namespace Refhost {

// How often a signal is delivered within its own delivery. A plug-in needs a handful: its handlers set what the signal
// is about to another value, until it is valid. The stack is enough for many times this number.
inline constexpr int mostDeliveries = 100;

inline std::string withoutEnd(const std::string& kind, const std::u16string& owner) {
  return "The signal " + kind + " of " + Formats::toUtf8(owner) +
         " answers itself without end: its handlers have fired it " + std::to_string(mostDeliveries) +
         " times, each within the one before.";
}

// Increments a counter for the lifetime of the object.
class InDelivery {
 public:
  explicit InDelivery(int& deliveries) : count(deliveries) { ++count; }
  InDelivery(const InDelivery&) = delete;
  InDelivery& operator=(const InDelivery&) = delete;
  ~InDelivery() { --count; }

 private:
  int& count;
};

// A signal that records its connections in the trace, and exceptions of slots as failed calls.
template <class Arg>
class HostSignal final : public Kiln::Signal<Arg> {
 public:
  // `kind` and `owner` describe a connection in the trace: "selection-change" of "Rotate180".
  HostSignal(const Trace& eventTrace, std::string signalKind, std::u16string ownerName)
      : trace(eventTrace),
        kind(std::move(signalKind)),
        owner(std::move(ownerName)) {}

  void attach(Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>> slot) override {
    demandGiven(slot, "Signal::attach", "a slot");
    trace.record(
        {"connect", {{"signal", Refhost::TraceValue(std::u16string(kind.begin(), kind.end()))}, {"of", owner}}});
    slots.push_back(std::move(slot));
  }

  Kiln::Allocator& allocator() noexcept override { return heap(); }

  // Whether its slots are being called.
  bool isInDelivery() const { return deliveries > 0; }

  // Calls the slots in connection order, without those connected during the call. A slot may destroy the signal. Throws
  // Kiln::Exception when slots that are called answer by firing it again, and that without end.
  void fire(Arg argument) {  // NOLINT(performance-unnecessary-value-param): as slots take it
    const Kiln::SmartPtr<HostSignal> self(this);
    const InDelivery delivery(deliveries);
    try {
      if (deliveries > mostDeliveries) throw misuse(withoutEnd(kind, owner));
      for (std::size_t i = 0, count = slots.size(); i < count; ++i) {
        const auto slot = slots[i];
        slot->call(argument);
      }
    } catch (...) {
      trace.calls().noteFailed(kind, owner);
      throw;
    }
  }

 private:
  const Trace& trace;
  std::string kind;
  std::u16string owner;
  int deliveries = 0;  // nesting depth
  std::vector<Kiln::SmartPtr<Kiln::ArgumentSlot<Arg>>> slots;
};

}  // namespace Refhost
