#include "app/password_file.h"

#include "app/host_options.h"
#include "files/path_text.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <stdexcept>

namespace App {
namespace {

constexpr std::size_t longestPassword = 1024;

}  // namespace

void addPasswordFile(CLI::App& command, std::string& file) {
  command.add_option("--password-file", file, "The file whose first line is the password that opens the job")
      ->type_name("FILE");
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
    throw std::runtime_error("The password in " + shown + " cannot be read: check the file's name and permissions.");
  if (password.ends_with('\r')) password.pop_back();
  if (password.empty()) throw std::runtime_error("The first line of " + shown + " is empty: write the password there.");
  if (password.size() > longestPassword || password.find('\0') != password.npos)
    throw std::runtime_error("The first line of " + shown + " is no password: it is too long, or binary.");
  return password;
}

std::string inWordsOfCommands(const Press::Error& error) {
  std::string sentence = error.what();
  const auto* const needed = dynamic_cast<const Press::PasswordNeeded*>(&error);
  if (needed == nullptr || needed->isWrong()) return sentence;
  sentence.pop_back();  // the full stop
  return sentence + ", or give the password by --password-file FILE.";
}

}  // namespace App
