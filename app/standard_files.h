// Standard input and output in the place of files.
#pragma once

#include "app/interruption.h"
#include "host/temporary_folder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace App {

// The job and the printed pages of a command, either of which may be "-": standard input and output. Printing has to
// look anywhere in a job, and must leave nothing half printed; so both pass through files, which go with the object.
class StandardFiles {
 public:
  // Reads all of standard input, if it is asked for. Throws Press::Cancelled when the user wants to stop meanwhile, and
  // std::runtime_error, one sentence, when it cannot be read or kept.
  StandardFiles(const std::string& in, const std::string& out, const Interruption& interruption);
  StandardFiles(const StandardFiles&) = delete;
  StandardFiles& operator=(const StandardFiles&) = delete;

  const std::filesystem::path& in() const { return input; }
  const std::filesystem::path& out() const { return output; }

  // Writes what is in `out` on standard output, if that is asked for. Throws as the constructor; then a part of it may
  // have been written.
  void deliver() const;

  // A sentence about `in` and `out`, with the names that the user knows them by.
  std::string inUsersWords(std::string sentence) const;

 private:
  void receive() const;

  const Interruption& interruption;
  std::optional<Refhost::TemporaryFolder> folder;
  std::filesystem::path input;
  std::filesystem::path output;
};

}  // namespace App
