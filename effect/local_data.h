// Local data: watermarks and overlays provided for the user, in one folder per provider.
#pragma once

#include "kiln/services.h"

#include <vector>

namespace Effect {

using Folders = std::vector<Kiln::SmartPtr<Kiln::Services::Path>>;

// The folders in the local data, in listing order. Throws Kiln::Exception when `localData` cannot be listed.
Folders localDataFolders(Kiln::Services::Path& localData);

// Whether data from these folders is merged: there are several, or the folder has a merge marker ("~merge").
bool isMergedData(Kiln::Services::Path& localData, const Folders& folders);

}  // namespace Effect
