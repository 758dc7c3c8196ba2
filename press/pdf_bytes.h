#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Press {

/// Writes small PDF files object by object, for samples and tests. Objects are given as their own PDF text.
class PdfBytes {
 public:
  /// The number of an object that `set` gives later.
  int reserve();
  void set(int number, std::string_view body);
  /// Both return the object's number.
  int add(std::string_view body);
  int addStream(std::string_view dictionaryEntries, std::string_view data);
  /// The whole file. Every reserved object must have been set.
  std::string finish(int catalog) const;

 private:
  std::vector<std::string> bodies;
};

/// "7 0 R": how one object names another.
std::string reference(int number);

}  // namespace Press
