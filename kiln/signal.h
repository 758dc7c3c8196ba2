// Signals and the slots that they call.
//
//   1. connect(signal, target, &Target::handler) creates a Slot and passes it to the signal, which owns it;
//   2. the host fires the signal: its slots are called in the order in which they were connected;
//   3. the target's destructor disconnects its slots: the signal still owns them, but they call nothing;
//   4. the host destroys every signal, and with it the slots, before it unloads the library that made them.
//
// A slot is made by the target's module and therefore runs that module's code until it is destroyed.
#pragma once

#include "kiln/ref_count.h"

namespace Kiln {

class SignalTarget;

// A connection, independent of its argument type. Owned by the signal; the target only links to it.
class SlotBase : public RefCount {
 public:
  // Whether a call still reaches the target.
  bool isConnected() const noexcept { return target != nullptr; }
  ~SlotBase() override { unlink(); }

 protected:
  explicit SlotBase(SignalTarget& receiver) noexcept;

 private:
  friend class SignalTarget;
  inline void unlink() noexcept;

  SignalTarget* target;
  SlotBase* next;
  SlotBase* previous = nullptr;
};

// A class with signal handlers. Its destructor disconnects its slots, so no call reaches a destroyed target.
class SignalTarget : public virtual Base {
 public:
  ~SignalTarget() override {
    while (slots != nullptr) slots->unlink();
  }

 private:
  friend class SlotBase;
  SlotBase* slots = nullptr;
};

inline SlotBase::SlotBase(SignalTarget& receiver) noexcept : target(&receiver), next(receiver.slots) {
  if (next != nullptr) next->previous = this;
  receiver.slots = this;
}

inline void SlotBase::unlink() noexcept {
  if (target == nullptr) return;
  if (next != nullptr) next->previous = previous;
  (previous != nullptr ? previous->next : target->slots) = next;
  target = nullptr;
  next = previous = nullptr;
}

// A connection that takes an Arg: by value, or by reference when the handler returns a result in it.
template <class Arg>
class ArgumentSlot : public SlotBase {
 public:
  // Runs the handler; does nothing when disconnected. Exceptions of the handler propagate. [host]
  virtual void call(Arg argument) = 0;

 protected:
  using SlotBase::SlotBase;
};

template <class Target, class Arg>
class Slot final : public ArgumentSlot<Arg> {
 public:
  using Handler = void (Target::*)(Arg);

  Slot(Target& receiver, Handler member) noexcept : ArgumentSlot<Arg>(receiver), object(receiver), handler(member) {}
  void call(Arg argument) override {
    if (this->isConnected()) (object.*handler)(static_cast<Arg&&>(argument));
  }

 private:
  Target& object;
  Handler handler;
};

// Implemented by the host, which fires it. It lives as long as its owner (a widget, a property, a GUI).
template <class Arg>
class Signal : public RefCount {
 public:
  // Keeps the slot and calls it from now on, after the ones attached earlier. [plug-in]
  virtual void attach(SmartPtr<ArgumentSlot<Arg>> slot) = 0;

  // The host's allocator. [plug-in]
  virtual Allocator& allocator() noexcept = 0;
};

// Connects a signal to a handler of `target`. Throws std::bad_alloc when out of memory. [plug-in]
template <class Target, class Arg>
void connect(Signal<Arg>& signal, Target& target, void (Target::*handler)(Arg)) {
  SmartPtr<ArgumentSlot<Arg>> slot(new (signal.allocator()) Slot<Target, Arg>(target, handler));
  if (!slot) throw std::bad_alloc();
  signal.attach(std::move(slot));
}

}  // namespace Kiln
