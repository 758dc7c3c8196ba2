// Failures of the host: each call of the plug-in fails once, and each allocation.
#include "check/plugin/groups.h"
#include "check/plugin/opening.h"

#include <new>

namespace Checking {
namespace {

using Refhost::Library;

constexpr int foreign = 42;

// Fails one call.
template <class Throw>
class OneFault final : public Faults {
 public:
  OneFault(int number, Throw what) : chosen(number), fail(what) {}

  void at(int call, const char* operation) override {
    if (call != chosen) return;
    failed = operation;
    fail();
  }

  // The operation that was failed; empty when there was none.
  std::string failed;

 private:
  int chosen;
  Throw fail;
};

void demandNoBlocks(long before, const std::string& when) {
  const long left = Refhost::heap().blocks() - before;
  demand(left == 0, std::to_string(left) + " blocks of the host's allocator are left when " + when + ".");
}

// Opens, with one call of the host failing by `fail`, for each that there is.
template <class Throw>
void survives(const Subject& subject, Refhost::Mode mode, const char* what, Throw fail) {
  const auto library = Refhost::make<Library>(subject.library);
  for (int number = 1;; ++number) {
    const long before = Refhost::heap().blocks();
    OneFault<Throw> fault(number, fail);
    bool hasPassed = false;
    {
      Opening opening(subject, *library, {.mode = mode}, &fault);
      try {
        opening.open();
      } catch (...) {
        if (fault.failed.empty()) throw;
        hasPassed = true;
      }
      hasPassed = hasPassed || !opening.face.told.empty();
    }
    if (fault.failed.empty()) return;
    demand(hasPassed, "The plug-in keeps " + std::string(what) + " of " + fault.failed +
                          " to itself: it neither passes through the plug-in, nor is the user told.");
    demandNoBlocks(before, fault.failed + " throws " + what);
  }
}

template <class Throw>
void survivesInEveryMode(const Subject& subject, const char* what, Throw fail) {
  for (const Refhost::Mode mode : {Refhost::Mode::docProp, Refhost::Mode::prePrint, Refhost::Mode::rootless})
    survives(subject, mode, what, fail);
}

void survivesExceptions(const Subject& subject) {
  survivesInEveryMode(subject, "a Kiln::Exception", [] { throw Refhost::failure("The check's own."); });
}

void survivesBadAlloc(const Subject& subject) {
  survivesInEveryMode(subject, "a std::bad_alloc", [] { throw std::bad_alloc(); });
}

void survivesForeignExceptions(const Subject& subject) {
  survivesInEveryMode(subject, "a foreign exception", [] { throw foreign; });
}

// Whether the allocator's blocks ran out; it lends any number again.
bool haveRunOut() {
  void* block = Refhost::heap().allocate(1);
  Refhost::heap().failAfter(-1);
  Refhost::heap().deallocate(block);
  return block == nullptr;
}

void survivesEveryAllocation(const Subject& subject) {
  const auto library = Refhost::make<Library>(subject.library);
  for (long blocks = 0;; ++blocks) {
    const long before = Refhost::heap().blocks();
    bool isOut = false;
    {
      Opening opening(subject, *library);
      Refhost::heap().failAfter(blocks);
      try {
        opening.open();
      } catch (...) {
        isOut = haveRunOut();
        if (!isOut) throw;
      }
      isOut = haveRunOut() || isOut;
    }
    if (!isOut) return;
    demandNoBlocks(before, "memory runs out after " + std::to_string(blocks) + " of them");
  }
}

}  // namespace

std::vector<Check> failureChecks() {
  return {
      {"failures/exception", "passes a Kiln::Exception of each call on, and leaves nothing behind", survivesExceptions},
      {"failures/bad-alloc", "passes a std::bad_alloc of each call on, and leaves nothing behind", survivesBadAlloc},
      {"failures/foreign", "passes a foreign exception of each call on, and leaves nothing behind",
       survivesForeignExceptions},
      {"failures/allocation", "leaves nothing behind when memory runs out at any allocation", survivesEveryAllocation}};
}

}  // namespace Checking
