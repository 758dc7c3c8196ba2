// Calls the last slot first.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PassingModel {
 public:
  using PassingModel::PassingModel;

 protected:
  void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) override {
    static_cast<void>(name);
    for (auto slot = signal.slots.rbegin(); slot != signal.slots.rend(); ++slot) (*slot)->call(change);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<CountingManager, Broken>))
