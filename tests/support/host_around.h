// A host that answers as another one does; a test overrides what it wants to see, or to answer itself.
#pragma once

#include "kiln/host.h"

namespace Testing {

class HostAround : public Kiln::Host {
 public:
  // `answering` outlives this one.
  explicit HostAround(Kiln::Host& answering) : inner(answering) {}
  HostAround(const HostAround&) = delete;
  HostAround& operator=(const HostAround&) = delete;
  virtual ~HostAround() = default;

  Kiln::Allocator& allocator() noexcept override { return inner.allocator(); }
  bool isPluginActive(Kiln::StringView plugin) override { return inner.isPluginActive(plugin); }
  void showPluginHelp(Kiln::StringView plugin) override { inner.showPluginHelp(plugin); }
  void showHelpTopic(Kiln::WStringView url, Kiln::WStringView topic) override { inner.showHelpTopic(url, topic); }
  Kiln::SmartPtr<Kiln::Services::TextList> attributeNames(Kiln::WStringView attribute) override {
    return inner.attributeNames(attribute);
  }
  void runJobStep() override { inner.runJobStep(); }
  void cancelJob() override { inner.cancelJob(); }
  Kiln::SmartPtr<Kiln::XUL::ListData> listData() override { return inner.listData(); }
  Kiln::SmartPtr<Kiln::XUL::Alignment> alignment(std::int32_t flags) override { return inner.alignment(flags); }
  Kiln::SmartPtr<Kiln::XUL::Image> image(Kiln::WStringView address, Kiln::WStringView scope) override {
    return inner.image(address, scope);
  }
  Kiln::SmartPtr<Kiln::XUL::Image> swatch(Kiln::WStringView colour, std::int32_t width, std::int32_t height) override {
    return inner.swatch(colour, width, height);
  }
  Kiln::WString translate(Kiln::WStringView text) override { return inner.translate(text); }
  Kiln::WString lookUp(Kiln::WStringView url, Kiln::WStringView key) override { return inner.lookUp(url, key); }
  Kiln::SmartPtr<Kiln::Services::TextList> locales(Kiln::WStringView package) override {
    return inner.locales(package);
  }
  Kiln::WString languageName() override { return inner.languageName(); }
  bool isJapanese() override { return inner.isJapanese(); }
  Kiln::SmartPtr<Kiln::Services::TextList> fontNames() override { return inner.fontNames(); }
  Kiln::SmartPtr<Kiln::Services::Path> path(Kiln::WStringView text) override { return inner.path(text); }
  Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> file(Kiln::SmartPtr<Kiln::Services::Path> path) override {
    return inner.file(path);
  }
  Kiln::SmartPtr<Kiln::Services::BackingStoreIO> resource(Kiln::WStringView url) override {
    return inner.resource(url);
  }
  Kiln::SmartPtr<Kiln::Services::Documents> documents() override { return inner.documents(); }
  Kiln::SmartPtr<Kiln::Services::Tickets> tickets() override { return inner.tickets(); }
  void tell(Kiln::WStringView sentence) override { inner.tell(sentence); }
  Kiln::SmartPtr<Kiln::XUL::Image> scaledImage(Kiln::WStringView address, Kiln::WStringView scope,
                                               float factor) override {
    return inner.scaledImage(address, scope, factor);
  }

 private:
  Kiln::Host& inner;
};

}  // namespace Testing
