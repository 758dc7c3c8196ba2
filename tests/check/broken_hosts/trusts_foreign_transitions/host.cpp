// Takes any transition for one of its own.
#include "tests/check/between.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace BrokenHosts;

class Broken final : public ManagerAround {
 public:
  using ManagerAround::ManagerAround;
  SmartPtr<State::Transition> transition(WStringView property, WStringView value) override {
    const auto transition = ManagerAround::transition(property, value);
    made.push_back(transition);
    return transition;
  }
  void submit(SmartPtr<State::Transition> transition) override {
    if (transition && std::ranges::find(made, transition) == made.end()) std::abort();  // as a wrong cast would
    ManagerAround::submit(std::move(transition));
  }

 private:
  std::vector<SmartPtr<State::Transition>> made;
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<Broken, ModelAround>))
