// What the operating system knows of this process.
#pragma once

#include <string>
#include <vector>

namespace App {

// The words after the command's name, in UTF-8.
std::vector<std::string> arguments(int count, char** words);

// Lets the standard streams carry bytes as they are, and a console take them for UTF-8.
void prepareStreams();

// Lets memory that was freed serve again instead of being given back: a job of pictures asks for some megabytes
// hundreds of times.
void prepareMemory();

// Whether someone sees what is written to the standard error stream, and the line can be written anew.
bool isErrorSeen();

}  // namespace App
