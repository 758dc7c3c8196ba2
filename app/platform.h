// Functions of the operating system for this process.
#pragma once

#include <string>
#include <vector>

namespace App {

// The arguments after the command's name, in UTF-8.
std::vector<std::string> arguments(int count, char** words);

// Makes the standard streams binary, and a console accept UTF-8.
void prepareStreams();

// Keeps freed memory for reuse: a job of pictures allocates some megabytes hundreds of times.
void prepareMemory();

// Whether standard error is a terminal on which a line can be overwritten.
bool isErrorSeen();

}  // namespace App
