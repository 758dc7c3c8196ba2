// Removes a file before it is replaced.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public HostAround {
 public:
  using HostAround::HostAround;
  SmartPtr<Services::FileBackingStoreIO> file(SmartPtr<Services::Path> path) override {
    if (path && path->lastPart().view() == u"file.txt") path->remove();
    return HostAround::file(std::move(path));
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withHost<Broken>)
