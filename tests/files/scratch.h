// A temporary folder for a test.
#pragma once

#include "files/disk.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

struct Scratch {
  Scratch() {
    static int count = 0;
    const auto name = "documents-" + std::to_string(Files::processNumber()) + "-" + std::to_string(++count);
    folder = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::filesystem::path folder;
};

inline void put(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The sorted names in a folder, including hidden ones.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// The message of the exception that the work throws; empty when it succeeds.
template <class Failure, class Work>
std::string sentenceOf(const Work& work) {
  try {
    work();
  } catch (const Failure& failure) {
    return failure.what();
  }
  return {};
}
