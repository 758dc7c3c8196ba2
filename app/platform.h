// What the operating system knows of this process.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace App {

// The words after the command's name, in UTF-8.
std::vector<std::string> arguments(int count, char** words);

// Lets the standard streams carry bytes as they are, and a console take them for UTF-8.
void prepareStreams();

// Whether someone sees what is written to the standard error stream, and the line can be written anew.
bool isErrorSeen();

// The folder of the running executable. Throws std::runtime_error when the system does not tell.
std::filesystem::path executableFolder();

}  // namespace App
