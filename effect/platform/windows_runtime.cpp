// What the compiler's static runtime takes from a thread library, done without it: the plug-in leaks nothing when it is
// unloaded, and imports nothing that has no place in it.
//
// An application that prints twice loads and unloads the plug-in twice, so leaks add up. mingw-w64's runtime leaks two
// things:
//
// - The state of exceptions in flight, one per thread. The compiler calls __emutls_get_address for it, and the
//   runtime's implementation allocates a thread-local slot through a thread library that never frees it: after a
//   thousand loads the process is out of slots. This file implements the function with one fibre-local slot. Freeing
//   such a slot also calls back for the data that each thread still holds in it.
// - 73 kB reserved for throwing when out of memory; __freeres frees them.
//
// The thread library also suspends threads, sets the clock and handles the process's exceptions, and its imports alone
// make virus scanners suspicious of a library. Of all this the runtime needs mutexes and the time of day, which this
// file takes from the system, and guards of its static variables, which need no lock here. A link that finds one of
// these functions twice needs one more of them. tests/contract/exports_windows_test.cpp holds the imports.
//
// The rest of the library must not use that thread library: it is compiled with -fno-threadsafe-statics (all calls
// are made on the host's UI thread) and has no std::mutex, std::call_once or thread_local object with a destructor.
// Other compilers for Windows need none of this.

#if defined(__MINGW32__)

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <pthread.h>
#include <time.h>

namespace __gnu_cxx {
void __freeres();  // in the runtime, but in none of its headers
}

namespace {

/// The compiler's description of a thread-local variable.
struct Variable {
  std::size_t size;
  std::size_t alignment;
  void* unused;
  const void* initialValue;  // null for all zero
};

/// One thread's copy of one variable. A thread has a handful at most.
struct Copy {
  Copy* next;
  const Variable* variable;
  void* storage;
};

// Called by the system for each thread that ends, and for each remaining thread when the slot is freed.
void WINAPI freeCopies(void* first) {
  for (auto* copy = static_cast<Copy*>(first); copy;) {
    Copy* next = copy->next;
    _aligned_free(copy->storage);
    std::free(copy);
    copy = next;
  }
}

// Constructed first in the library and so destroyed last: destructors after it must neither throw nor catch.
class Runtime {
 public:
  Runtime() : slot(FlsAlloc(freeCopies)) {}

  ~Runtime() {
    FlsFree(slot);
    __gnu_cxx::__freeres();
  }

  bool isComplete() const { return slot != FLS_OUT_OF_INDEXES; }

  void* find(const Variable& variable) {
    auto* first = static_cast<Copy*>(FlsGetValue(slot));
    for (Copy* copy = first; copy; copy = copy->next)
      if (copy->variable == &variable) return copy->storage;
    return add(variable, first);
  }

 private:
  void* add(const Variable& variable, Copy* first) {
    auto* copy = static_cast<Copy*>(std::malloc(sizeof(Copy)));
    void* storage = _aligned_malloc(variable.size, variable.alignment);
    // Reached while throwing, so there is no way to report it.
    if (!copy || !storage) std::abort();
    if (variable.initialValue)
      std::memcpy(storage, variable.initialValue, variable.size);
    else
      std::memset(storage, 0, variable.size);
    *copy = {first, &variable, storage};
    if (!FlsSetValue(slot, copy)) std::abort();
    return storage;
  }

  DWORD slot;
};

__attribute__((init_priority(101))) Runtime runtime;

// A mutex of the runtime, which never locks one twice: a word that is -1 when it was initialised statically.
static_assert(sizeof(pthread_mutex_t) == sizeof(SRWLOCK));

SRWLOCK* lockOf(pthread_mutex_t* mutex) { return reinterpret_cast<SRWLOCK*>(mutex); }

}  // namespace

extern "C" {

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*) {
  *mutex = 0;
  return 0;
}

int pthread_mutex_destroy(pthread_mutex_t*) { return 0; }

int pthread_mutex_lock(pthread_mutex_t* mutex) {
  InterlockedCompareExchange64(mutex, 0, -1);
  AcquireSRWLockExclusive(lockOf(mutex));
  return 0;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
  ReleaseSRWLockExclusive(lockOf(mutex));
  return 0;
}

// For the seed of random numbers: whatever the clock, the time since 1970.
int clock_gettime(clockid_t, timespec* time) {
  constexpr std::uint64_t since1601 = 116'444'736'000'000'000;
  constexpr std::uint64_t ticks = 10'000'000;  // in a second
  FILETIME now;
  GetSystemTimePreciseAsFileTime(&now);
  const std::uint64_t passed = ((std::uint64_t{now.dwHighDateTime} << 32) | now.dwLowDateTime) - since1601;
  time->tv_sec = static_cast<time_t>(passed / ticks);
  time->tv_nsec = static_cast<long>(passed % ticks) * 100;
  return 0;
}

int __cxa_guard_acquire(char* guard) { return *guard == 0; }
void __cxa_guard_release(char* guard) { *guard = 1; }
void __cxa_guard_abort(char*) {}

void* __emutls_get_address(void* variable) { return runtime.find(*static_cast<const Variable*>(variable)); }

// Fails to load the library without the slot, instead of terminating at the first exception.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) { return reason != DLL_PROCESS_ATTACH || runtime.isComplete(); }
}

#endif
