// The host: what a plug-in can ask for besides properties and widgets.
#pragma once

#include "kiln/dom.h"
#include "kiln/exception.h"
#include "kiln/gui.h"
#include "kiln/property.h"
#include "kiln/services.h"
#include "kiln/tickets.h"

namespace Kiln {

// Outlives every plug-in that it is passed to.
class Host {
 public:
  // The memory for all that is shared with the host; the same object each time. [plug-in]
  virtual Allocator& allocator() noexcept = 0;

  // Whether the plug-in with that name is enabled. Called by UIPlugin::isActive. [plug-in]
  virtual bool isPluginActive(StringView plugin) = 0;

  // Opens help at the plug-in's own topic. Called by UIPlugin::showHelp. [plug-in, ready]
  virtual void showPluginHelp(StringView plugin) = 0;

  // Opens a help file (a chrome:// address) at a topic. [plug-in, ready]
  virtual void showHelpTopic(WStringView url, WStringView topic) = 0;

  // The names that an attribute of the plug-in's elements lists, for example the property names that "lock" locks; none
  // for an attribute that the host does not know. [plug-in]
  virtual SmartPtr<Services::TextList> attributeNames(WStringView attribute) = 0;

  // Runs the host's modal job step, which asks the user for the name of what is being created and puts it into the
  // property OverlayImageName. [plug-in, ready]
  virtual void runJobStep() = 0;

  // Ends the current job unprinted, by setting its CancelJob. [plug-in, ready]
  virtual void cancelJob() = 0;

  // A new list without items. [plug-in, ready]
  virtual SmartPtr<XUL::ListData> listData() = 0;

  // A new alignment, built with XUL::Alignment::Flags. [plug-in]
  virtual SmartPtr<XUL::Alignment> alignment(std::int32_t flags) = 0;

  // The picture at an address, from a scope of resources ("global" for the shared ones, else empty) or, where `address`
  // is a path, from a file. Null when it cannot be read. [plug-in, ready]
  virtual SmartPtr<XUL::Image> image(WStringView address, WStringView scope) = 0;

  // A picture filled with one colour ("#" and six hexadecimal digits), sides in pixels. Null when it cannot be made of
  // such arguments. [plug-in, ready]
  virtual SmartPtr<XUL::Image> swatch(WStringView colour, std::int32_t width, std::int32_t height) = 0;

  // The text with its string-table reference resolved in the user's language; a text that is not a reference, or is in
  // no table, is returned unchanged. [plug-in]
  virtual WString translate(WStringView text) = 0;

  // What the string table at `url` has for `key` ("$IDS_NONE;"); empty when it has nothing. [plug-in]
  virtual WString lookUp(WStringView url, WStringView key) = 0;

  // The locales that a chrome package has, for example "en-US"; none for a package that there is not. [plug-in]
  virtual SmartPtr<Services::TextList> locales(WStringView package) = 0;

  // The language of the user interface: "English", "Japanese", "Chinese-Traditional", "Chinese-Simplified", "German",
  // "French"; "English" for any other language. Never empty. [plug-in]
  virtual WString languageName() = 0;

  // Whether that language is Japanese. [plug-in]
  virtual bool isJapanese() = 0;

  // The installed font face names; null when they are unknown. [plug-in]
  virtual SmartPtr<Services::TextList> fontNames() = 0;

  // The path that `text` names, in the notation of the system, with "/" as a separator on every system. [plug-in]
  virtual SmartPtr<Services::Path> path(WStringView text) = 0;

  // A backing store on a file, which need not exist. Opens nothing yet. [plug-in]
  virtual SmartPtr<Services::FileBackingStoreIO> file(SmartPtr<Services::Path> path) = 0;

  // A read-only backing store on a resource (a chrome:// address). Throws Exception when that is no address of one.
  // [plug-in]
  virtual SmartPtr<Services::BackingStoreIO> resource(WStringView url) = 0;

  // The service for documents; the same object each time. [plug-in]
  virtual SmartPtr<Services::Documents> documents() = 0;

  // The service for PrintTickets; the same object each time. PTPlugin asks for it at its construction. [plug-in]
  virtual SmartPtr<Services::Tickets> tickets() = 0;

  // Reports a failure that does not abort the current operation to the user: one sentence. Throw to abort. [plug-in]
  virtual void tell(WStringView sentence) = 0;

  // The picture that `image` returns, its sides multiplied by `factor`, which is at least 1: for screens of more than
  // 96 pixels per inch. Null when it cannot be read. [plug-in, ready]
  virtual SmartPtr<XUL::Image> scaledImage(WStringView address, WStringView scope, float factor) = 0;

  // The host's interface of that name, as a pointer to it; null when it has none. It lives as long as the host. This is
  // how later versions of the contract add to the host (see RefCount::queryInterface). [plug-in]
  virtual void* queryInterface(StringView) noexcept { return nullptr; }

 protected:
  Host() = default;
  Host(const Host&) = default;
  Host& operator=(const Host&) = default;
  ~Host() = default;
};

}  // namespace Kiln
