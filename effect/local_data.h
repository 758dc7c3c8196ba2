// Local data: what others provide for the user, a folder each.
#pragma once

#include "kiln/services.h"

#include <vector>

namespace Effect {

using Folders = std::vector<Kiln::SmartPtr<Kiln::Services::Path>>;

// The folders in the local data, in listing order. Throws Kiln::Exception when they cannot be listed.
Folders localDataFolders(Kiln::Services::Path& localData);

// Whether what is read from these folders was brought together from several places: by there being several, or by
// somebody before, who left a mark.
bool isMergedData(Kiln::Services::Path& localData, const Folders& folders);

}  // namespace Effect
