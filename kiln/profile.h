// Profiles: all driver settings saved to a file and loaded again. The property values travel by the host's hand; what a
// plug-in keeps in files of its own it adds at the export signal and takes up again at the import signal.
#pragma once

#include "kiln/ref_count.h"
#include "kiln/text.h"

namespace Kiln {

class Property;

// One export or import. Implemented by the host.
class ImportExportEvent : public RefCount {
 public:
  // An argument of the event, for example "IncludeUserdata"; empty when it has none of that name. [plug-in]
  virtual SmartPtr<Property> property(WStringView name) = 0;

  // The folder that the plug-in's files of this profile go into, given the folder of local data
  // (`kilnworks.user.localdata.path`). At an export the host makes it when it is asked for it; throws Exception when it
  // cannot. [plug-in]
  virtual WString location(WStringView localData) = 0;
};

// Handlers take it by value. Valid for the duration of the call.
using ImportExportEventArg = SmartPtr<ImportExportEvent>;

}  // namespace Kiln
