#include "app/system/interruption.h"

#include <csignal>

namespace App {
namespace {

volatile std::sig_atomic_t caught = 0;

// The system resets the handler when it is called, so that a second signal ends the process.
extern "C" void noteSignal(int number) { caught = number; }

constexpr int signals[] = {SIGINT, SIGTERM};

}  // namespace

Interruption::Interruption() {
  caught = 0;
  for (const int number : signals) std::signal(number, noteSignal);
}

Interruption::~Interruption() {
  for (const int number : signals) std::signal(number, SIG_DFL);
}

int Interruption::signal() const { return caught; }

}  // namespace App
