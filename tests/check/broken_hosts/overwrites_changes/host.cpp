// Writes a file anew whenever it is opened, so that every change seems to be its own.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public HostAround {
 public:
  using HostAround::HostAround;
  SmartPtr<Services::FileBackingStoreIO> file(SmartPtr<Services::Path> path) override {
    if (path && path->lastPart().view() == u"shared.txt" && path->exists()) {
      const String bytes = HostAround::file(path)->readAll();
      path->remove();
      const auto anew = HostAround::file(path);
      anew->write(bytes.view());
      anew->commit();
    }
    return HostAround::file(std::move(path));
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, withHost<Broken>)
