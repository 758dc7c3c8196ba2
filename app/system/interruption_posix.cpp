#include "app/system/interruption.h"

#include <csignal>

namespace App {
namespace {

volatile std::sig_atomic_t caught = 0;

extern "C" void noteSignal(int number) { caught = number; }

// Ctrl-C, termination by another program, and a closed terminal.
constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};

// Sets a signal handler, unless the signal was ignored when the process started, as nohup and shells in the background
// do.
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
