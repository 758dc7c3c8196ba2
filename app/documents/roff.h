// A manual page in the language of man and mandoc.
#pragma once

#include <string>
#include <string_view>

namespace App {

class Roff {
 public:
  // `date` and `source` stand at the foot of the page.
  Roff(std::string_view name, std::string_view date, std::string_view source);

  // Parts of a line: plain text, and the same in bold.
  static std::string text(std::string_view plain);
  static std::string bold(std::string_view plain);

  void section(std::string_view heading);
  void subsection(std::string_view heading);
  void paragraph();
  void line(std::string_view parts);

  // An entry of a list, and what is said of it.
  void item(std::string_view parts, std::string_view plain);

  // Lines that stay as they are.
  void beginLines();
  void endLines() { page += ".fi\n.in\n"; }

  const std::string& finished() const { return page; }

 private:
  std::string page;
  bool isBelowHeading = false;
};

}  // namespace App
