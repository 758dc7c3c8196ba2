// Fires the selection changes of a submit in the opposite order.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

std::vector<std::function<void()>> waiting;

class LateManager final : public CountingManager {
 public:
  using CountingManager::CountingManager;

 protected:
  void done() override {
    auto fires = std::exchange(waiting, {});
    for (auto fire = fires.rbegin(); fire != fires.rend(); ++fire) (*fire)();
  }
};

class Broken final : public PassingModel {
 public:
  using PassingModel::PassingModel;

 protected:
  void pass(const std::u16string& name, SelectionSignal& signal, ModelSelectionChange& change) override {
    static_cast<void>(name);
    if (submits == 0) return signal.deliver(change);
    waiting.emplace_back([&signal, copy = change]() mutable { signal.deliver(copy); });
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<LateManager, Broken>))
