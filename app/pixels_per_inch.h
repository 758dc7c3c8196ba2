// What the system says of its screen, for commands that want it otherwise.
#pragma once

#include <optional>

namespace App {

// Lets the system report these horizontal pixels per inch to this process, where that is a matter of the system's.
// Nothing: this process goes on. A number: another process, to which the system reports them, has done the whole
// command in the place of this one, and ended with that status.
//
// To be called first of all, before standard input is read. What cannot be had stays as it is; whoever needs it finds
// out.
std::optional<int> reportPixelsPerInch(int wanted);

}  // namespace App
