// The texts that the user has stamped with, in a file among the user's settings.
#pragma once

#include "kiln/plugin.h"

#include <string>
#include <vector>

namespace Stamp {

class StampFile {
 public:
  // `lender` outlives the object. Without a folder for the user's settings nothing is kept.
  explicit StampFile(Kiln::Host& lender) : host(lender) {}

  // The texts, the latest first. Throws Kiln::Exception when there is a file, and it cannot be read.
  std::vector<std::u16string> texts(Kiln::Property& settings) const;

  // Keeps a text as the latest one. Throws Kiln::Exception when it cannot.
  void add(Kiln::Property& settings, std::u16string_view text) const;

 private:
  Kiln::SmartPtr<Kiln::Services::Path> path(Kiln::Property& settings) const;
  std::vector<std::u16string> read(const Kiln::SmartPtr<Kiln::Services::Path>& file) const;
  void write(const Kiln::SmartPtr<Kiln::Services::Path>& file, const std::vector<std::u16string>& texts) const;

  Kiln::Host& host;
};

}  // namespace Stamp
