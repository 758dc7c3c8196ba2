// The reference host, packaged for the checks of hosts; each host below broken_hosts/ overrides what it breaks.
#pragma once

#include "check/host_package.h"
#include "files/module.h"
#include "host/preferences.h"

#include <filesystem>
#include <memory>
#include <string>

namespace Testing {

class PackagedHost : public Checking::HostUnderTest, public Refhost::Face {
 public:
  PackagedHost(Checking::PlayedUser& played, std::filesystem::path resourceFolder, std::filesystem::path homeFolder)
      : user(played),
        resources(std::move(resourceFolder)),
        home(std::move(homeFolder)) {}

  void open(Kiln::CreatePlugin& createPlugin, Checking::Opened mode) override;
  void close() override { preferences.reset(); }
  void click(Kiln::WStringView id) override;
  void choose(Kiln::WStringView id, std::int32_t item) override;
  void type(Kiln::WStringView id, Kiln::WStringView text) override;
  void paste(Kiln::WStringView id, Kiln::WStringView text) override;
  void leave(Kiln::WStringView id) override;
  void scroll(Kiln::WStringView id, std::int32_t position) override;
  void pick(Kiln::WStringView id, std::uint32_t colour) override;
  void acceptDialog() override;
  void cancelDialog() override;
  bool accept() override { return preferences->accept(); }
  void help() override { preferences->help(); }
  void exportProfile() override;
  void importProfile() override;
  Kiln::String told() override;

 protected:
  // What the plug-in is made by; a host that breaks something puts itself between the two.
  static Kiln::CreatePlugin* factory;

 private:
  friend Kiln::UIPlugin* makePlugin(Kiln::Host&, Kiln::PropertyManager, const Kiln::String&, void*,
                                    Kiln::SmartPtr<Kiln::Services::Library>);

  std::filesystem::path modelFile() const;

  // The widget in the topmost dialog, or in the tabs.
  template <class Kind>
  Kind& widget(Kiln::WStringView id);

  // Refhost::Face
  void runModally(Refhost::Dialog& dialog) override;
  void dialogOpened(Refhost::Dialog&) override {}
  void dialogClosed(Refhost::Dialog&) override {}
  void widgetChanged(Refhost::WidgetNode&) override {}
  void showHelp(const std::u16string&, const std::u16string&) override {}
  std::optional<std::u16string> askJobStep() override { return u"Check"; }
  void showFailure(const std::string& sentence) override;

  Checking::PlayedUser& user;
  std::filesystem::path resources;
  std::filesystem::path home;
  std::string firstTold;
  std::unique_ptr<Refhost::Preferences> preferences;
};

// What the checks' createPlugin makes.
Kiln::UIPlugin* makePlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name, void* reserved,
                           Kiln::SmartPtr<Kiln::Services::Library> library);

// The file of the library that this code is in.
std::filesystem::path thisLibrary();

}  // namespace Testing

// Exports a host of that class. The reference host loads plug-ins from files alone: it loads this library once more,
// whose createPlugin calls `makeBy`.
#define EXPORT_HOST(HostClass, makeBy)                                                                                 \
  KILN_EXPORT Checking::HostUnderTest* createHost(Checking::PlayedUser& user, const char* resources,                   \
                                                  const char* home) {                                                  \
    return new HostClass(user, resources, home);                                                                       \
  }                                                                                                                    \
  KILN_EXPORT Kiln::UIPlugin* createPlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name,  \
                                           void* reserved, Kiln::SmartPtr<Kiln::Services::Library> library) {          \
    return makeBy(host, std::move(manager), name, reserved, std::move(library));                                       \
  }
