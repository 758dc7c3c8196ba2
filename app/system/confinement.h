// Gives up what a process does not need, before it reads what others have written. Linux only.
#pragma once

#include <filesystem>
#include <vector>

namespace App {

// The files that a process still needs.
struct NeededFiles {
  // Files and folders to read, with everything below them. Missing ones are ignored.
  std::vector<std::filesystem::path> toRead;

  // The folder to write in and to remove.
  std::filesystem::path toWrite;
};

// What the kernel enforces from now on.
struct Confined {
  bool toFiles = false;  // no other files are opened, made or removed, and no TCP port is reached
  bool toCalls = false;  // no program is run, no socket is made, and no other process is traced, signalled or opened
};

// Confines this thread and the ones that it starts, until the process ends. What the kernel does not support is left
// out. Open files stay open.
Confined confine(const NeededFiles& files);

}  // namespace App
