// Fires nothing for a value that the property has.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PassingModel {
 public:
  using PassingModel::PassingModel;

 protected:
  void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) override {
    if (name != u"CheckText" || change.value.view() != u"Start" || submits == 0) signal.deliver(change);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<CountingManager, Broken>))
