// The user's wish to stop: by Ctrl-C, by ending the process, or by closing its terminal.
#pragma once

namespace App {

// While it lives, the first such wish is noted instead of ending the process; a second one ends it. What the process
// was started to ignore, as under nohup, stays ignored. One at a time.
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
