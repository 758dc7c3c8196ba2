#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Press {

// Writes small PDF files object by object, for samples and tests. Objects are passed as PDF syntax.
class PdfBytes {
 public:
  // Reserves an object number for a later `set`.
  int reserve();
  void set(int number, std::string_view body);

  // Both return the object's number.
  int add(std::string_view body);
  int addStream(std::string_view dictionaryEntries, std::string_view data);

  // The complete file. All reserved objects must have been set.
  std::string finish(int catalog) const;

 private:
  std::vector<std::string> bodies;
};

// "7 0 R": a reference to an object.
std::string reference(int number);

}  // namespace Press
