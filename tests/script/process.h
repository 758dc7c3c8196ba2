// The built kiln, run as a process of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

// Runs a program with these words and this text as standard input. `environment`: "NAME=VALUE" settings for it.
Outcome runProgram(const std::string& program, const std::vector<std::string>& words, const std::string& input = {},
                   const std::vector<std::string>& environment = {});

// The same for kiln.
Outcome runKiln(const std::vector<std::string>& words, const std::string& input = {},
                const std::vector<std::string>& environment = {});

// The files that a process has as its standard input, output and error output.
struct StandardFiles {
  std::filesystem::path in;
  std::filesystem::path out;
  std::filesystem::path err;
};

// Runs a program, with settings of its own in the environment, to its end; gives its exit status, -1 when it was
// killed.
int runProcess(const std::vector<std::string>& words, const std::vector<std::string>& environment,
               const StandardFiles& files);

// A new empty folder for the running test, which stays for whoever looks into a failure.
std::filesystem::path testFolder();

void writeFile(const std::filesystem::path& file, const std::string& content);
std::string readFile(const std::filesystem::path& file);

// Whether two printed files are alike, but for the identifier, which changes with the time.
bool samePages(const std::string& onePdf, const std::string& otherPdf);
