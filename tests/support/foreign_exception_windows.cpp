#include "tests/support/foreign_exception.h"

#include <windows.h>

#include <excpt.h>

namespace {

constexpr DWORD foreignCode = 0xE06D7363;  // the exception code of Microsoft's compiler

}  // namespace

extern "C" long foreignExceptionFilter(EXCEPTION_POINTERS* found, void*) {
  return found->ExceptionRecord->ExceptionCode == foreignCode ? EXCEPTION_EXECUTE_HANDLER : EXCEPTION_CONTINUE_SEARCH;
}

namespace {

void run(const std::function<void()>* work) { (*work)(); }

// Separate from code with destructors: a function cannot use both kinds of exception handling.
__attribute__((noinline)) bool endsEarly(void (*call)(const std::function<void()>*),
                                         const std::function<void()>* work) {
  volatile bool isDone = false;
  __try1("foreignExceptionFilter") call(work);
  isDone = true;
  __except1 return !isDone;
}

}  // namespace

namespace Testing {

void throwForeignException() { RaiseException(foreignCode, 0, 0, nullptr); }

bool endsByForeignException(const std::function<void()>& work) { return endsEarly(run, &work); }

}  // namespace Testing
