// Functions of the operating system for this process.
#pragma once

#include <string>
#include <vector>

namespace App {

// The arguments after the command's name, in UTF-8.
std::vector<std::string> arguments(int count, char** words);

// Makes the standard streams binary, and a console accept UTF-8.
void prepareStreams();

// Makes the system report the screen's own resolution to this process where that is not these pixels per inch and the
// system reports another one to programs that do not ask for it. Call before anything uses the screen; the host rejects
// a resolution that the system does not report.
void prepareScreen(int pixelsPerInch);

// Keeps freed memory for reuse: a job of pictures allocates some megabytes hundreds of times.
void prepareMemory();

// Whether standard error is a terminal on which a line can be overwritten.
bool isErrorSeen();

}  // namespace App
