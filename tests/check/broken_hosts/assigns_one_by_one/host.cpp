// Applies each pair of a transition by itself.
#include "tests/check/between.h"

namespace {

using namespace BrokenHosts;

// A transition that remembers its pairs.
class Pairs final : public State::Transition {
 public:
  explicit Pairs(SmartPtr<State::Transition> answering) : inner(std::move(answering)) {}
  void add(WStringView property, WStringView value) override {
    inner->add(property, value);
    pairs.emplace_back(property.view(), value.view());
  }

  const SmartPtr<State::Transition> inner;
  std::vector<std::pair<std::u16string, std::u16string>> pairs;
};

class Broken final : public ManagerAround {
 public:
  using ManagerAround::ManagerAround;
  SmartPtr<State::Transition> transition(WStringView property, WStringView value) override {
    const auto made = make<Pairs>(inner->transition(property, value));
    made->pairs.emplace_back(property.view(), value.view());
    return made;
  }
  void submit(SmartPtr<State::Transition> transition) override {
    auto* own = static_cast<Pairs*>(transition.get());
    if (own == nullptr) return inner->submit(nullptr);
    if (own->pairs.size() == 1) return inner->submit(own->inner);
    for (const auto& [property, value] : own->pairs) inner->submit(inner->transition(property, value));
  }
};

}  // namespace

EXPORT_HOST(PackagedHost, (withManager<Broken, ModelAround>))
