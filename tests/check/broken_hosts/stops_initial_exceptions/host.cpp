// Keeps exceptions of the initial state to itself.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

class Broken final : public PassingModel {
 public:
  using PassingModel::PassingModel;

 protected:
  void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) override {
    static_cast<void>(name);
    try {
      signal.deliver(change);
    } catch (...) {
      if (submits > 0) throw;
    }
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<CountingManager, Broken>))
