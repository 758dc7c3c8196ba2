// The switch of the mutants that tools/mutate writes into its copy of the sources; nothing else includes this.
// MUTANT=n in the environment turns mutant n on. MUTANT_TRACE names a file of MUTANT_COUNT bytes, in which the byte of
// each mutant that is reached becomes 1; it is mapped, so that processes which crash and those started by others count.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

// Hidden, so that the plug-in exports what it would without mutants, and can be unloaded.
namespace Mutation __attribute__((visibility("hidden"))) {

  struct Switch {
    int active = 0;
    char* reached = nullptr;

    Switch() {
      if (const char* id = std::getenv("MUTANT")) active = std::atoi(id);
      const char* trace = std::getenv("MUTANT_TRACE");
      const char* count = std::getenv("MUTANT_COUNT");
      const int file = trace != nullptr && count != nullptr ? ::open(trace, O_RDWR | O_CLOEXEC) : -1;
      if (file < 0) return;
      const auto bytes = static_cast<std::size_t>(std::atoll(count));
      void* mapped = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
      if (mapped != MAP_FAILED) reached = static_cast<char*>(mapped);
      ::close(file);
    }
  };

  inline bool on(int id) {
    static const Switch state;
    if (state.reached != nullptr) state.reached[id] = 1;
    return state.active == id;
  }

  // Which of `count` neighbouring statements is the one to run at `step`; mutant `first` + n swaps n with the one after
  // it.
  inline int order(int first, int count, int step) {
    if (step + 1 < count && on(first + step)) return step + 1;
    return step > 0 && on(first + step - 1) ? step - 1 : step;
  }

  template <class A, class B>
  bool less(int id, const A& a, const B& b) {
    return on(id) ? a <= b : a < b;
  }
  template <class A, class B>
  bool lessEqual(int id, const A& a, const B& b) {
    return on(id) ? a < b : a <= b;
  }
  template <class A, class B>
  bool greater(int id, const A& a, const B& b) {
    return on(id) ? a >= b : a > b;
  }
  template <class A, class B>
  bool greaterEqual(int id, const A& a, const B& b) {
    return on(id) ? a > b : a >= b;
  }

}  // namespace Mutation
