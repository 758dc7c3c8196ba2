// The user's wish to stop, by Ctrl-C or by ending the process.
#pragma once

namespace App {

// While it lives, the first such wish is noted instead of ending the process; a second one ends it. One at a time.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // The number of the signal that came; 0 for none.
  int signal() const;
};

}  // namespace App
