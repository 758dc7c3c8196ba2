#include "app/interruption.h"

#include <csignal>

namespace App {
namespace {

volatile std::sig_atomic_t caught = 0;

extern "C" void noteSignal(int number) { caught = number; }

constexpr int signals[] = {SIGINT, SIGTERM};

}  // namespace

Interruption::Interruption() {
  caught = 0;
  struct sigaction action = {};
  action.sa_handler = noteSignal;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int number : signals) sigaction(number, &action, nullptr);
}

Interruption::~Interruption() {
  for (const int number : signals) std::signal(number, SIG_DFL);
}

int Interruption::signal() const { return caught; }

}  // namespace App
