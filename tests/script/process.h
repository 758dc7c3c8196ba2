// Runs the built kiln in a process.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

// Runs a program with these arguments and standard input. `environment`: "NAME=VALUE" settings for it.
Outcome runProgram(const std::string& program, const std::vector<std::string>& words, const std::string& input = {},
                   const std::vector<std::string>& environment = {});

// The same for kiln.
Outcome runKiln(const std::vector<std::string>& words, const std::string& input = {},
                const std::vector<std::string>& environment = {});

// The standard streams of a process.
struct StandardFiles {
  std::filesystem::path in;
  std::filesystem::path out;
  std::filesystem::path err;
};

// Runs a program with additional environment variables to completion; returns its exit status, -1 when it was killed.
int runProcess(const std::vector<std::string>& words, const std::vector<std::string>& environment,
               const StandardFiles& files);

// A new empty folder for the running test; it is kept for debugging.
std::filesystem::path testFolder();

void writeFile(const std::filesystem::path& file, const std::string& content);
std::string readFile(const std::filesystem::path& file);

// Whether two printed files are equal, except for the identifier, which depends on the time.
bool samePages(const std::string& onePdf, const std::string& otherPdf);
