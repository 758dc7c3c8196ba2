// Local data: watermarks and overlays provided for the user, in one folder per provider.
#pragma once

#include "kiln/exception.h"
#include "kiln/services.h"

#include <optional>
#include <vector>

namespace Effect {

struct LocalData {
  // The folders in listing order, without those that cannot be examined.
  std::vector<Kiln::SmartPtr<Kiln::Services::Path>> folders;

  // Whether their data is merged: there are several, or there is a merge marker ("~merge").
  bool isMerged = false;

  // What kept something from being examined, and whether the folders could be listed nevertheless.
  std::optional<Kiln::Exception> problem;
  bool isListed = true;
};

// Never throws for a file; empty when there is no local data.
LocalData readFolders(Kiln::Services::Path& localData);

}  // namespace Effect
