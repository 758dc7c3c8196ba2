// A plug-in that tells the version of the contract that it was compiled with, whatever that is: ANSWERED, as "{3, 1}";
// none where that is not defined. Without a GUI it wants as many calls as the setting "versioned.calls" says.
#include "kiln/plugin.h"

#include <cstdlib>

namespace {

using namespace Kiln;

class VersionedPlugin final : public UIPlugin {
 public:
  using UIPlugin::UIPlugin;
  VersionedPlugin(Host& lender, const String& name, const PropertyManager& manager, SmartPtr<Services::Library> own)
      : UIPlugin(lender, name, manager, std::move(own)) {}

  void create() override {}
  void initialise() override {}
  void configureUI(SmartPtr<XUL::GUI>) override {}
  bool rootlessActivation() override {
    const auto wanted = propertyManager()->configuration()->child(u"versioned.calls");
    const int most = wanted ? std::atoi(wanted->narrowValue().str().c_str()) : 1;
    ++calls;
    propertyManager()->modelProperties()->child(u"OverlayImageName")->setValue(std::u16string(calls, u'x'));
    return static_cast<int>(calls) < most;
  }

 private:
  std::size_t calls = 0;
};

}  // namespace

KILN_EXPORT UIPlugin* createPlugin(Host& host, PropertyManager manager, const String& name, [[maybe_unused]] void* told,
                                   SmartPtr<Services::Library> library) {
#ifdef ANSWERED
  if (answerVersion(name, told)) {
    static_cast<VersionExchange*>(told)->plugin = ContractVersion ANSWERED;
    return nullptr;
  }
#endif
  return new (host.allocator()) VersionedPlugin(host, name, manager, library);
}
