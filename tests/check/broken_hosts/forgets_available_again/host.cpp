// Does not announce an option that becomes available while it is chosen.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PassingModel {
 public:
  using PassingModel::PassingModel;

 protected:
  void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) override {
    if (name != u"CheckSize" || change.value.view() != u"Large") signal.deliver(change);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<CountingManager, Broken>))
