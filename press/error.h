#pragma once

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Press {

/// What a person can mend about a job: `what()` is one sentence in UTF-8 that names the file, says what is wrong
/// with it and what to do.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Thrown when the caller's progress function asked to stop; nothing was written.
class Cancelled : public std::runtime_error {
 public:
  Cancelled() : std::runtime_error("printing was stopped") {}
};

/// A path in UTF-8.
std::string utf8(const std::filesystem::path& path);

/// A path as it stands in a sentence: in UTF-8, in quotation marks.
std::string quoted(const std::filesystem::path& path);

/// The start of a text, of at most so many bytes, as it stands in a sentence: whole characters, "?" for what controls a
/// terminal, and "..." for what is left out.
std::string excerpt(std::string_view text, std::size_t most);

}  // namespace Press
