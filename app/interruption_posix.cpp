#include "app/interruption.h"

#include <csignal>

namespace App {
namespace {

volatile std::sig_atomic_t caught = 0;

extern "C" void noteSignal(int number) { caught = number; }

// Ctrl-C, the wish of another program, and a terminal that is closed.
constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};

// Has a signal do this, unless it was ignored when the process began: whoever starts a program that outlives its
// terminal, or leaves Ctrl-C to another one, does so.
void handle(int number, void (*handler)(int)) {
  struct sigaction action = {};
  sigaction(number, nullptr, &action);
  if (action.sa_handler == SIG_IGN) return;
  action = {};
  action.sa_handler = handler;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(number, &action, nullptr);
}

}  // namespace

Interruption::Interruption() {
  caught = 0;
  for (const int number : signals) handle(number, noteSignal);
}

Interruption::~Interruption() {
  for (const int number : signals) handle(number, SIG_DFL);
}

int Interruption::signal() const { return caught; }

}  // namespace App
