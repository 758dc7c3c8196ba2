// The small types of the contract.
#include "host/allocator.h"
#include "host/object.h"
#include "host/signal.h"
#include "kiln/exception.h"
#include "kiln/ref_count.h"
#include "kiln/signal.h"
#include "kiln/text.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using Kiln::SmartPtr;
using Refhost::heap;

struct Counted : Kiln::RefCount {
  explicit Counted(int& destroyed) : count(destroyed) {}
  ~Counted() override { ++count; }
  int& count;
};

TEST(SmartPtr, DestroysItsObjectWithTheLastHolderThroughTheAllocator) {
  const long before = heap().blocks();
  int destroyed = 0;
  {
    SmartPtr<Counted> first(new (heap()) Counted(destroyed));
    const SmartPtr<Kiln::RefCount> second = first;
    EXPECT_EQ(heap().blocks(), before + 1);
    EXPECT_EQ(first->references(), 2);
    first.reset();
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(heap().blocks(), before);
}

TEST(SmartPtr, AssignmentToItselfKeepsTheObject) {
  int destroyed = 0;
  SmartPtr<Counted> pointer(new (heap()) Counted(destroyed));
  const SmartPtr<Counted>& same = pointer;
  pointer = same;
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(pointer->references(), 1);
}

struct Throwing : Kiln::RefCount {
  Throwing() { throw std::runtime_error("no"); }
};

TEST(Base, GivesItsMemoryBackWhenAConstructorThrows) {
  const long before = heap().blocks();
  EXPECT_THROW(new (heap()) Throwing(), std::runtime_error);
  EXPECT_EQ(heap().blocks(), before);
}

TEST(Base, IsNotConstructedWhenMemoryIsOut) {
  int destroyed = 0;
  heap().failAfter(0);
  const auto* object = new (heap()) Counted(destroyed);
  heap().failAfter(-1);
  EXPECT_EQ(object, nullptr);
}

TEST(Text, IsSharedByItsCopiesAndFreedByTheLast) {
  const long before = heap().blocks();
  {
    const Kiln::WString text(heap(), u"Draft");
    const Kiln::WString copy = text;
    EXPECT_EQ(heap().blocks(), before + 1);
    EXPECT_EQ(copy.view().data(), text.view().data());
    EXPECT_EQ(copy.str(), u"Draft");
  }
  EXPECT_EQ(heap().blocks(), before);
}

TEST(Text, KeepsZerosAndUnpairedSurrogates) {
  const std::u16string units{u'a', u'\0', char16_t(0xD800), u'b'};
  EXPECT_EQ(Kiln::WString(heap(), units).view(), units);
}

TEST(Text, WithoutUnitsTakesNoMemory) {
  const long before = heap().blocks();
  const Kiln::String text(heap(), "");
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(heap().blocks(), before);
}

TEST(Exception, CarriesItsMessage) {
  const Kiln::XUL::KeyError error(heap(), "There is no such property.");
  const Kiln::Exception copy = error;
  EXPECT_STREQ(copy.what(), "There is no such property.");
}

struct Target : Kiln::SignalTarget {
  void take(int number) { taken.push_back(number); }
  std::vector<int> taken;
};

TEST(Signal, CallsItsSlotsInTheOrderOfConnection) {
  const Refhost::Trace trace;
  const auto signal = Refhost::make<Refhost::HostSignal<std::vector<int>&>>(trace, "click", u"box");
  struct Appender : Kiln::SignalTarget {
    explicit Appender(int number) : mark(number) {}
    void append(std::vector<int>& list) { list.push_back(mark); }
    int mark;
  } first(1), second(2);
  connect(*signal, second, &Appender::append);
  connect(*signal, first, &Appender::append);
  std::vector<int> order;
  signal->fire(order);
  EXPECT_EQ(order, (std::vector<int>{2, 1}));
}

TEST(Signal, DoesNotReachATargetThatIsGone) {
  const Refhost::Trace trace;
  const auto signal = Refhost::make<Refhost::HostSignal<int>>(trace, "click", u"box");
  Target stays;
  {
    Target goes;
    connect(*signal, goes, &Target::take);
    connect(*signal, stays, &Target::take);
  }
  signal->fire(7);
  EXPECT_EQ(stays.taken, std::vector<int>{7});
}

TEST(Signal, MayGoBeforeItsTarget) {
  const Refhost::Trace trace;
  const long before = heap().blocks();
  Target target;
  {
    const auto signal = Refhost::make<Refhost::HostSignal<int>>(trace, "click", u"box");
    connect(*signal, target, &Target::take);
  }
  EXPECT_EQ(heap().blocks(), before);
}

TEST(Signal, DoesNotCallASlotThatIsConnectedWhileItFires) {
  const Refhost::Trace trace;
  struct Growing : Kiln::SignalTarget {
    Kiln::Signal<int>* signal = nullptr;
    int calls = 0;
    void grow(int) {
      ++calls;
      connect(*signal, *this, &Growing::grow);
    }
  } target;
  const auto signal = Refhost::make<Refhost::HostSignal<int>>(trace, "click", u"box");
  target.signal = signal.get();
  connect(*signal, target, &Growing::grow);
  signal->fire(0);
  EXPECT_EQ(target.calls, 1);
}

}  // namespace
