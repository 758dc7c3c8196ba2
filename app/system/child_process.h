// This program once more, in a process of its own.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace App {

struct ProcessEnd {
  enum class How {
    ended,    // `code` is the exit status
    crashed,  // by what `code` says: a signal, or on Windows an exception's code
    stopped,  // since it took too long
  };
  How how;
  unsigned long code = 0;
};

// Runs this program with these arguments, and with standard streams that lead nowhere, for this long at most. Throws
// std::runtime_error, one sentence, when it cannot be started.
ProcessEnd runThisProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds longest);

// How a process has crashed, for people: "signal 11 (Segmentation fault)", "exception 0xC0000005".
std::string nameOfCrash(unsigned long code);

// Lets a crash of this process end it at once, without a dialog or a memory image.
void crashQuietly();

}  // namespace App
