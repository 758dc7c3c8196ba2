#pragma once

#include "formats/sentences.h"

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Press {

// An error that the user can fix: `what()` is one UTF-8 sentence with the file, the problem, and what to do.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The job opens with a password alone, which was not given, or is wrong.
class PasswordNeeded : public Error {
 public:
  PasswordNeeded(const std::string& sentence, bool wasGiven) : Error(sentence), isGiven(wasGiven) {}

  // Whether a password was given: it is wrong.
  bool isWrong() const { return isGiven; }

 private:
  bool isGiven;
};

// Thrown when the caller's progress function stopped the job; nothing was written.
class Stopped : public std::runtime_error {
 public:
  Stopped() : std::runtime_error(Formats::sentence("printing was stopped")) {}
};

// The path in UTF-8.
std::string utf8(const std::filesystem::path& path);

// The path in UTF-8 and in quotation marks, for messages.
std::string quoted(const std::filesystem::path& path);

// The start of a text, of at most so many bytes, as it stands in a sentence: whole characters, "?" for what controls a
// terminal, and "..." for what is left out.
std::string excerpt(std::string_view text, std::size_t most);

}  // namespace Press
