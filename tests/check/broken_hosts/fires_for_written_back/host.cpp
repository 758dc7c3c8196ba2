// Fires for what a handler writes back.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

std::function<void()> again;

class AgainManager final : public CountingManager {
 public:
  using CountingManager::CountingManager;

 protected:
  void done() override {
    if (submits == 1 && again) again();
  }
};

class Broken final : public PassingModel {
 public:
  using PassingModel::PassingModel;

 protected:
  void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) override {
    if (name == u"CheckText" && submits > 0) again = [&signal, copy = change]() mutable { signal.deliver(copy); };
    signal.deliver(change);
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<AgainManager, Broken>))
