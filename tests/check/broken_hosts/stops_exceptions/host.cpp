// Stops exceptions of handlers in submit.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public ManagerAround {
 public:
  using ManagerAround::ManagerAround;
  void submit(SmartPtr<State::Transition> transition) override {
    if (!transition) return inner->submit(nullptr);
    try {
      inner->submit(std::move(transition));
    } catch (const Exception& error) {
      if (std::string(error.what()) != "Stop.") throw;
    }
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<Broken, ModelAround>))
