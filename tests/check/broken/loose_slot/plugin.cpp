// Has a slot that its destructor does not disconnect.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

struct Nobody final : SignalTarget {};
Nobody nobody;

class LooseSlot final : public ArgumentSlot<ModelSelectionChange&> {
 public:
  explicit LooseSlot(Host& called) : ArgumentSlot(nobody), host(called) {}
  void call(ModelSelectionChange&) override { host.isJapanese(); }

 private:
  Host& host;
};

class Plugin final : public Sound {
 public:
  using Sound::Sound;

 protected:
  void ready() override {
    SmartPtr<ArgumentSlot<ModelSelectionChange&>> slot(new (host().allocator()) LooseSlot(host()));
    if (!slot) throw std::bad_alloc();
    properties()->selectionChangeSignal(u"Title")->attach(slot);
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
