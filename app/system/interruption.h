// The user's request to stop: Ctrl-C, a termination signal, or a closed terminal.
#pragma once

namespace App {

// While an object exists, the first request is recorded instead of ending the process; a second one ends it. Ignored
// signals, as under nohup, stay ignored. Only one object may exist at a time.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // The signal received; 0 for none.
  int signal() const;
};

}  // namespace App
