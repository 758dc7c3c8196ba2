// Does not announce one of the properties.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PassingModel {
 public:
  using PassingModel::PassingModel;

 protected:
  void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) override {
    if (name != u"CheckSwitch" || submits > 0) signal.deliver(change);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<CountingManager, Broken>))
