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
  virtual Allocator& allocator() noexcept = 0;

  // Whether the plug-in with that name is enabled. Called by UIPlugin::isActive. [plug-in]
  virtual bool isPluginActive(StringView plugin) = 0;

  // Opens help at the plug-in's own topic. Called by UIPlugin::showHelp. [plug-in, ready]
  virtual void showPluginHelp(StringView plugin) = 0;

  // Opens a help file (a chrome:// address) at a topic. [plug-in, ready]
  virtual void showHelpTopic(WStringView url, WStringView topic) = 0;

  // The names that an attribute of the plug-in's elements lists, for example the property names that "lock" locks.
  // Never null. [plug-in]
  virtual SmartPtr<Services::TextList> attributeNames(WStringView attribute) = 0;

  // Runs the host's modal job step, which asks the user for the name of what is being created and puts it into the
  // property OverlayImageName. [plug-in, ready]
  virtual void runJobStep() = 0;

  // Ends the current job unprinted, by setting its CancelJob. [plug-in, ready]
  virtual void cancelJob() = 0;

  // An empty list of items. [plug-in, ready]
  virtual SmartPtr<XUL::ListData> listData() = 0;

  // An alignment built with XUL::Alignment::Flags. [plug-in]
  virtual SmartPtr<XUL::Alignment> alignment(std::int32_t flags) = 0;

  // The picture at an address, from a scope of resources ("global" for the shared ones, else empty) or, where `address`
  // is a path, from a file. Empty when it cannot be read. [plug-in, ready]
  virtual SmartPtr<XUL::Image> image(WStringView address, WStringView scope) = 0;

  // A picture filled with one colour ("#" and six hexadecimal digits), sides in pixels. Empty when it cannot be made.
  // [plug-in, ready]
  virtual SmartPtr<XUL::Image> swatch(WStringView colour, std::int32_t width, std::int32_t height) = 0;

  // The text with its string-table reference resolved in the user's language; a text that is not a reference, or is in
  // no table, is returned unchanged. [plug-in]
  virtual WString translate(WStringView text) = 0;

  // What the string table at `url` has for `key` ("$IDS_NONE;"); empty when it has nothing. [plug-in]
  virtual WString lookUp(WStringView url, WStringView key) = 0;

  // The locales that a chrome package has, for example "en-US". Never null. [plug-in]
  virtual SmartPtr<Services::TextList> locales(WStringView package) = 0;

  // The language of the user interface: "English", "Japanese", "Chinese-Traditional", "Chinese-Simplified", "German",
  // "French". [plug-in]
  virtual WString languageName() = 0;
  virtual bool isJapanese() = 0;

  // The installed font face names; empty when unknown. [plug-in]
  virtual SmartPtr<Services::TextList> fontNames() = 0;

  // Creates a path. [plug-in]
  virtual SmartPtr<Services::Path> path(WStringView text) = 0;

  // A backing store on a file, and a read-only one on a resource (a chrome:// address). [plug-in]
  virtual SmartPtr<Services::FileBackingStoreIO> file(SmartPtr<Services::Path> path) = 0;
  virtual SmartPtr<Services::BackingStoreIO> resource(WStringView url) = 0;

  // Never empty. [plug-in]
  virtual SmartPtr<Services::Documents> documents() = 0;
  virtual SmartPtr<Services::Tickets> tickets() = 0;

  // Reports a failure that does not abort the current operation to the user: one sentence. Throw to abort. [plug-in]
  virtual void tell(WStringView sentence) = 0;

  // The picture that `image` returns, its sides multiplied by `factor`, which is at least 1: for screens of more than
  // 96 pixels per inch. Empty when it cannot be read. [plug-in, ready]
  virtual SmartPtr<XUL::Image> scaledImage(WStringView address, WStringView scope, float factor) = 0;

 protected:
  Host() = default;
  Host(const Host&) = default;
  Host& operator=(const Host&) = default;
  ~Host() = default;
};

}  // namespace Kiln
