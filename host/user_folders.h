// The folders in which the user's data lies, by the host settings.
#pragma once

#include "host/documents/disk.h"
#include "host/model/settings.h"

namespace Refhost {

// Removes from them what programs have left behind that died while writing, and puts back what was set aside. Throws
// nothing: a folder that cannot be tidied is opened as it is.
void tidyUserFolders(Disk& disk, const Settings& settings);

}  // namespace Refhost
