// Who is told of the calls that pass through a host, a property manager or a GUI around another one.
#pragma once

namespace Checking {

class Watch {
 public:
  virtual ~Watch() = default;

  // Before the call of `operation` ("Host::image"). `needsReady`: it may be called from the GUI's ready signal on. What
  // it throws passes to the caller.
  virtual void calling(const char* operation, bool needsReady) = 0;
};

}  // namespace Checking
