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

// Runs kiln with these words and this text as standard input. `environment`: "NAME=VALUE" settings for it.
Outcome runKiln(const std::vector<std::string>& words, const std::string& input = {},
                const std::vector<std::string>& environment = {});

// A new empty folder for the running test, which stays for whoever looks into a failure.
std::filesystem::path testFolder();

void writeFile(const std::filesystem::path& file, const std::string& content);
std::string readFile(const std::filesystem::path& file);
