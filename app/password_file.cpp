#include "app/password_file.h"

#include "app/host_options.h"
#include "app/messages.h"
#include "files/path_text.h"
#include "formats/sentences.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <stdexcept>

namespace App {
namespace {

constexpr std::size_t longestPassword = 1024;

}  // namespace

void addPasswordFile(CLI::App& command, std::string& file) {
  command
      .add_option("--password-file", file,
                  Formats::sentence("The file whose first line is the password that opens the job"))
      ->type_name("FILE")
      ->check(notEmpty(Formats::sentence("a file has to be named")));
}

std::string passwordIn(const std::string& file) {
  if (file.empty()) return {};
  const std::string shown = Files::shownPath(toPath(file));
  std::ifstream stream(toPath(file), std::ios::binary);
  // A byte more tells that the line is too long; a pipe may stay open after it.
  std::string password;
  char unit = 0;
  while (password.size() <= longestPassword && stream.get(unit) && unit != '\n') password += unit;
  if (stream.bad() || (password.empty() && unit != '\n' && !stream.eof()))
    throw std::runtime_error(
        Formats::sentence("The password in {1} cannot be read: check the file's name and permissions.", shown));
  if (password.ends_with('\r')) password.pop_back();
  if (password.empty())
    throw std::runtime_error(Formats::sentence("The first line of {1} is empty: write the password there.", shown));
  if (password.size() > longestPassword || password.find('\0') != password.npos)
    throw std::runtime_error(
        Formats::sentence("The first line of {1} is no password: it is too long, or binary.", shown));
  return password;
}

std::string inWordsOfCommands(const Press::Error& error) {
  const auto* const needed = dynamic_cast<const Press::PasswordNeeded*>(&error);
  if (needed == nullptr || needed->isWrong()) return error.what();
  return Formats::sentence("{1}, or give the password by --password-file FILE.", withoutStop(error.what()));
}

}  // namespace App
