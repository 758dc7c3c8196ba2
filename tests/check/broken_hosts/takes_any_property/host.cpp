// Makes transitions of unknown properties.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public ManagerAround {
 public:
  using ManagerAround::ManagerAround;
  SmartPtr<State::Transition> transition(WStringView property, WStringView value) override {
    return inner->transition(inner->modelProperties()->hasChild(property) ? property : u"CheckText", value);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<Broken, ModelAround>))
