// Standard input and output in place of files.
#pragma once

#include "app/system/interruption.h"
#include "files/temporary_folder.h"
#include "formats/sentences.h"

#include <filesystem>
#include <optional>
#include <string>

namespace App {

// The job and the output of a command, either of which may be "-" for standard input or output. Printing needs random
// access and atomic output, so both go through temporary files, which are deleted with the object.
class StandardFiles {
 public:
  // Makes the folder for the temporary files. Sentences call an output of "-" `outputName`. Throws std::runtime_error,
  // one sentence, when that fails.
  StandardFiles(const std::string& in, const std::string& out, const Interruption& interruption,
                std::string outputName = Formats::sentence("Standard output"));
  StandardFiles(const StandardFiles&) = delete;
  StandardFiles& operator=(const StandardFiles&) = delete;

  const std::filesystem::path& in() const { return input; }
  const std::filesystem::path& out() const { return output; }

  // The folder of the temporary files; empty where there are none.
  std::filesystem::path temporaryFolder() const { return folder ? folder->path() : std::filesystem::path(); }

  // Reads all of standard input if requested; call it before `in` is used. Throws Press::Stopped when interrupted, and
  // std::runtime_error, one sentence, on read or write errors.
  void receive() const;

  // Copies `out` to standard output if requested. Throws like `receive`, possibly after writing a part.
  void deliver() const;

  // Replaces the paths of `in` and `out` in a sentence by the names that the user knows.
  std::string inUsersWords(std::string sentence) const;

 private:
  const Interruption& interruption;
  std::optional<Files::TemporaryFolder> folder;
  std::filesystem::path input;
  std::filesystem::path output;
  const bool hasInput;
  const std::string nameOfOutput;
};

// Throws Failure when standard output is a terminal, which cannot show a PDF.
void demandNoTerminal();

}  // namespace App
