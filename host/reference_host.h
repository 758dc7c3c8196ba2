// The services that this host provides to a plug-in besides properties and widgets.
#pragma once

#include "host/chrome/addresses.h"
#include "host/chrome/strings.h"
#include "host/documents/path.h"
#include "host/face.h"
#include "host/model/properties.h"
#include "host/model/settings.h"
#include "host/object.h"
#include "host/ticket/tickets.h"
#include "host/trace.h"
#include "kiln/host.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Refhost {

// A picture from an address or file, or a swatch of one colour.
class Image final : public Kiln::XUL::Image {
 public:
  static constexpr const char* interfaceName = "Refhost::Image";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Kiln::XUL::Image::queryInterface(asked);
  }

  Image(std::u16string imageSource, std::filesystem::path imageFile, std::u16string imageScope = {})
      : source(std::move(imageSource)),
        file(std::move(imageFile)),
        scope(std::move(imageScope)) {}
  // A picture to be shown with sides other than its own, in pixels.
  Image(const Image& original, int pictureWidth, int pictureHeight)
      : source(original.source),
        file(original.file),
        scope(original.scope),
        width(pictureWidth),
        height(pictureHeight) {}
  Image(std::u16string swatchColour, int swatchWidth, int swatchHeight)
      : colour(std::move(swatchColour)),
        width(swatchWidth),
        height(swatchHeight) {}

  // The address or path as given by the plug-in, and the file; both empty for a swatch.
  const std::u16string source;
  const std::filesystem::path file;

  // The scope given by the plug-in; empty for none. This host ignores scopes.
  const std::u16string scope;

  // A swatch's colour ("#RRGGBB"), empty for a picture; and the sides in pixels, 0 for a picture's own.
  const std::u16string colour;
  const int width = 0;
  const int height = 0;
};

// The properties and settings of one run, for its plug-in.
class PropertyManager final : public Kiln::IPropertyManager {
 public:
  PropertyManager(Kiln::SmartPtr<PropertyModel> properties, const Trace& eventTrace);

  Kiln::SmartPtr<Kiln::ModelRoot> modelProperties() override { return model; }
  Kiln::SmartPtr<Kiln::Property> configuration() override { return settings; }
  Kiln::SmartPtr<Kiln::Property> xmlCustomisation() override { return customisation; }
  Kiln::SmartPtr<Kiln::State::Transition> transition(Kiln::WStringView property, Kiln::WStringView value) override;
  void submit(Kiln::SmartPtr<Kiln::State::Transition> transition) override;
  bool valueAllowed(Kiln::WStringView property, Kiln::WStringView value) override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::ImportExportEventArg>> profileImportSignal() override { return profileImport; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::ImportExportEventArg>> profileExportSignal() override { return profileExport; }

  const Kiln::SmartPtr<PropertyModel> model;
  const Kiln::SmartPtr<Settings> settings;
  const Kiln::SmartPtr<Settings> customisation;
  const Kiln::SmartPtr<HostSignal<Kiln::ImportExportEventArg>> profileImport;
  const Kiln::SmartPtr<HostSignal<Kiln::ImportExportEventArg>> profileExport;

 private:
  const Trace& trace;
};

class ReferenceHost final : public Kiln::Host {
 public:
  struct World {
    Face& face;
    const Trace& trace;
    const ChromeFolders& chrome;
    const StringTables& strings;
    const FileWorld& files;
    PropertyModel& model;
  };

  explicit ReferenceHost(const World& hostWorld);

  // Whether plug-ins are enabled, the current help topic, the names in the "lock" attribute, and the installed fonts,
  // nothing when unknown.
  bool active = true;
  std::function<std::u16string()> helpContext;
  std::vector<std::u16string> lockedNames;
  std::function<std::optional<std::vector<std::u16string>>()> fonts;

  // Receives the sentences that the plug-in reports to the user; when empty, the face does.
  std::function<void(const std::string& sentence)> hearTold;

  TicketService& ticketDocuments() { return *ticketService; }

  Kiln::Allocator& allocator() noexcept override { return heap(); }
  bool isPluginActive(Kiln::StringView) override { return active; }
  void showPluginHelp(Kiln::StringView plugin) override;
  void showHelpTopic(Kiln::WStringView url, Kiln::WStringView topic) override;
  Kiln::SmartPtr<Kiln::Services::TextList> attributeNames(Kiln::WStringView attribute) override;
  void runJobStep() override;
  void cancelJob() override;
  Kiln::SmartPtr<Kiln::XUL::ListData> listData() override;
  Kiln::SmartPtr<Kiln::XUL::Alignment> alignment(std::int32_t flags) override;
  Kiln::SmartPtr<Kiln::XUL::Image> image(Kiln::WStringView address, Kiln::WStringView scope) override;
  Kiln::SmartPtr<Kiln::XUL::Image> swatch(Kiln::WStringView colour, std::int32_t width, std::int32_t height) override;
  Kiln::WString translate(Kiln::WStringView text) override;
  Kiln::WString lookUp(Kiln::WStringView url, Kiln::WStringView key) override;
  Kiln::SmartPtr<Kiln::Services::TextList> locales(Kiln::WStringView package) override;
  Kiln::WString languageName() override;
  bool isJapanese() override;
  Kiln::SmartPtr<Kiln::Services::TextList> fontNames() override;
  Kiln::SmartPtr<Kiln::Services::Path> path(Kiln::WStringView text) override;
  Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> file(Kiln::SmartPtr<Kiln::Services::Path> path) override;
  Kiln::SmartPtr<Kiln::Services::BackingStoreIO> resource(Kiln::WStringView url) override;
  Kiln::SmartPtr<Kiln::Services::Documents> documents() override { return documentService; }
  Kiln::SmartPtr<Kiln::Services::Tickets> tickets() override { return ticketService; }
  void tell(Kiln::WStringView sentence) override;
  Kiln::SmartPtr<Kiln::XUL::Image> scaledImage(Kiln::WStringView address, Kiln::WStringView scope,
                                               float factor) override;

 private:
  World world;
  std::map<std::u16string, StringTable> tables;
  Kiln::SmartPtr<Kiln::Services::Documents> documentService;
  Kiln::SmartPtr<TicketService> ticketService;
};

}  // namespace Refhost
