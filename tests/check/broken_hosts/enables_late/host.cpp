// Fires enable changes last.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

std::vector<std::function<void()>> waiting;

class LateManager final : public CountingManager {
 public:
  using CountingManager::CountingManager;

 protected:
  void done() override {
    for (const auto& fire : std::exchange(waiting, {})) fire();
  }
};

class Broken final : public ModelAround {
 public:
  using ModelAround::ModelAround;
  SmartPtr<Signal<ModelEnableChange&>> enableChangeSignal(WStringView name) override {
    auto& signal = enables[std::u16string(name.view())];
    if (!signal)
      signal = make<EnableSignal>(inner->enableChangeSignal(name), [](auto& passed, auto& change) {
        if (submits == 0) return passed.deliver(change);
        waiting.emplace_back([&passed, copy = change]() mutable { passed.deliver(copy); });
      });
    return signal;
  }

 private:
  std::map<std::u16string, SmartPtr<EnableSignal>> enables;
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<LateManager, Broken>))
