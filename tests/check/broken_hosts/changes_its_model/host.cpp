// Has another model for each question.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public ManagerAround {
 public:
  using ManagerAround::ManagerAround;
  SmartPtr<ModelRoot> modelProperties() override { return make<ModelAround>(inner->modelProperties(), nobody); }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<Broken, ModelAround>))
