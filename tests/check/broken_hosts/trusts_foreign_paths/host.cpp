// Takes any path for one of its own.
#include "tests/check/between.h"

#include <cstdlib>

namespace {

using namespace BrokenHosts;

class Broken final : public HostAround {
 public:
  using HostAround::HostAround;
  SmartPtr<Services::FileBackingStoreIO> file(SmartPtr<Services::Path> path) override {
    if (path && !path->folder()) std::abort();  // as a wrong cast would
    return HostAround::file(std::move(path));
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withHost<Broken>)
