// Takes what is no ticket.
#include "tests/check/skeleton.h"

namespace {

using namespace Broken;

class Plugin final : public Sound {
 public:
  using Sound::Sound;
  void convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& to) override {
    try {
      Sound::convertPTtoPM(std::move(ticket), to);
    } catch (const Exception&) {
      return;
    }
  }
};

}  // namespace

EXPORT_PLUGIN(Plugin)
