// Profiles: all driver settings saved to a file and loaded again. The host transfers the property values; a plug-in
// adds files of its own in the export signal and reads them back in the import signal.
#pragma once

#include "kiln/ref_count.h"
#include "kiln/text.h"

namespace Kiln {

class Property;

// One export or import. Implemented by the host.
class ImportExportEvent : public RefCount {
 public:
  // An argument of the event, for example "IncludeUserdata"; null when it has none with that name. [plug-in]
  virtual SmartPtr<Property> property(WStringView name) = 0;

  // The folder for the plug-in's files in this profile, given the folder of local data
  // (`kilnworks.user.localdata.path`). During an export the host creates it on this call; throws Exception when it
  // cannot. [plug-in]
  virtual WString location(WStringView localData) = 0;
};

// Passed to handlers by value. Valid for the duration of the call.
using ImportExportEventArg = SmartPtr<ImportExportEvent>;

}  // namespace Kiln
