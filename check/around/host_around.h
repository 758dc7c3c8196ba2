// A host that answers as another one does, and tells of each call first.
#pragma once

#include "check/around/watch.h"
#include "kiln/host.h"

namespace Checking {

class HostAround : public Kiln::Host {
 public:
  // Both outlive this one.
  HostAround(Kiln::Host& answering, Watch& toldOfCalls) : inner(answering), watch(toldOfCalls) {}
  HostAround(const HostAround&) = delete;
  HostAround& operator=(const HostAround&) = delete;
  virtual ~HostAround() = default;

  Kiln::Allocator& allocator() noexcept override { return inner.allocator(); }
  bool isPluginActive(Kiln::StringView plugin) override { return at("Host::isPluginActive").isPluginActive(plugin); }
  void showPluginHelp(Kiln::StringView plugin) override { atReady("Host::showPluginHelp").showPluginHelp(plugin); }
  void showHelpTopic(Kiln::WStringView url, Kiln::WStringView topic) override {
    atReady("Host::showHelpTopic").showHelpTopic(url, topic);
  }
  Kiln::SmartPtr<Kiln::Services::TextList> attributeNames(Kiln::WStringView attribute) override {
    return at("Host::attributeNames").attributeNames(attribute);
  }
  void runJobStep() override { atReady("Host::runJobStep").runJobStep(); }
  void cancelJob() override { atReady("Host::cancelJob").cancelJob(); }
  Kiln::SmartPtr<Kiln::XUL::ListData> listData() override { return atReady("Host::listData").listData(); }
  Kiln::SmartPtr<Kiln::XUL::Alignment> alignment(std::int32_t flags) override {
    return at("Host::alignment").alignment(flags);
  }
  Kiln::SmartPtr<Kiln::XUL::Image> image(Kiln::WStringView address, Kiln::WStringView scope) override {
    return atReady("Host::image").image(address, scope);
  }
  Kiln::SmartPtr<Kiln::XUL::Image> swatch(Kiln::WStringView colour, std::int32_t width, std::int32_t height) override {
    return atReady("Host::swatch").swatch(colour, width, height);
  }
  Kiln::WString translate(Kiln::WStringView text) override { return at("Host::translate").translate(text); }
  Kiln::WString lookUp(Kiln::WStringView url, Kiln::WStringView key) override {
    return at("Host::lookUp").lookUp(url, key);
  }
  Kiln::SmartPtr<Kiln::Services::TextList> locales(Kiln::WStringView package) override {
    return at("Host::locales").locales(package);
  }
  Kiln::WString languageName() override { return at("Host::languageName").languageName(); }
  bool isJapanese() override { return at("Host::isJapanese").isJapanese(); }
  Kiln::SmartPtr<Kiln::Services::TextList> fontNames() override { return at("Host::fontNames").fontNames(); }
  Kiln::SmartPtr<Kiln::Services::Path> path(Kiln::WStringView text) override { return at("Host::path").path(text); }
  Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> file(Kiln::SmartPtr<Kiln::Services::Path> path) override {
    return at("Host::file").file(path);
  }
  Kiln::SmartPtr<Kiln::Services::BackingStoreIO> resource(Kiln::WStringView url) override {
    return at("Host::resource").resource(url);
  }
  Kiln::SmartPtr<Kiln::Services::Documents> documents() override { return at("Host::documents").documents(); }
  Kiln::SmartPtr<Kiln::Services::Tickets> tickets() override { return at("Host::tickets").tickets(); }
  void tell(Kiln::WStringView sentence) override { at("Host::tell").tell(sentence); }
  Kiln::SmartPtr<Kiln::XUL::Image> scaledImage(Kiln::WStringView address, Kiln::WStringView scope,
                                               float factor) override {
    return atReady("Host::scaledImage").scaledImage(address, scope, factor);
  }
  void* queryInterface(Kiln::StringView asked) noexcept override { return inner.queryInterface(asked); }

 private:
  Kiln::Host& at(const char* operation) {
    watch.calling(operation, false);
    return inner;
  }
  Kiln::Host& atReady(const char* operation) {
    watch.calling(operation, true);
    return inner;
  }

  Kiln::Host& inner;
  Watch& watch;
};

}  // namespace Checking
