#include "host/reference_host.h"

#include "files/path_text.h"
#include "formats/names.h"
#include "formats/text.h"
#include "host/chrome/help.h"
#include "host/documents/bitmap.h"
#include "host/documents/documents.h"
#include "host/documents/stores.h"
#include "host/documents/text_list.h"
#include "host/widgets/list.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Refhost {
namespace {

class Transition final : public Kiln::State::Transition {
 public:
  Transition(const PropertyModel& properties, Kiln::WStringView property, Kiln::WStringView value) : model(properties) {
    append(property, value);
  }

  static constexpr const char* interfaceName = "Refhost::Transition";
  void* queryInterface(Kiln::StringView asked) noexcept override {
    return asked.view() == interfaceName ? this : Kiln::State::Transition::queryInterface(asked);
  }

  void add(Kiln::WStringView property, Kiln::WStringView value) override { append(property, value); }

  TracePairs pairs;
  bool isSubmitted = false;

 private:
  void append(Kiln::WStringView property, Kiln::WStringView value) {
    if (!model.isKnown(property))
      throw Own<Kiln::XUL::KeyError>(heap(), "The model has no property " + Formats::toUtf8(property) + ".");
    pairs.emplace_back(property.view(), value.view());
  }

  const PropertyModel& model;
};

class Alignment final : public Kiln::XUL::Alignment {
 public:
  explicit Alignment(std::int32_t alignmentFlags) : flags(alignmentFlags) {}
  void bind(Kiln::SmartPtr<Kiln::XUL::Widget> container) override {
    const auto box = Kiln::smartCast<Container>(container);
    if (box && (flags & shareColumns) != 0) box->shareColumns();
  }

 private:
  std::int32_t flags;
};

std::vector<std::u16string> wideNames(const std::vector<std::string>& names) {
  std::vector<std::u16string> wide;
  std::transform(names.begin(), names.end(), std::back_inserter(wide), Formats::toUtf16);
  return wide;
}

bool isColour(std::u16string_view text) {
  constexpr std::u16string_view digits = u"0123456789abcdefABCDEF";
  return text.size() == 7 && text.front() == u'#' && text.find_first_not_of(digits, 1) == text.npos;
}

}  // namespace

PropertyManager::PropertyManager(Kiln::SmartPtr<PropertyModel> properties, const Trace& eventTrace)
    : model(std::move(properties)),
      settings(make<Settings>()),
      customisation(make<Settings>()),
      profileImport(make<HostSignal<Kiln::ImportExportEventArg>>(eventTrace, "profile-import", u"PropertyManager")),
      profileExport(make<HostSignal<Kiln::ImportExportEventArg>>(eventTrace, "profile-export", u"PropertyManager")),
      trace(eventTrace) {}

Kiln::SmartPtr<Kiln::State::Transition> PropertyManager::transition(Kiln::WStringView property,
                                                                    Kiln::WStringView value) {
  return make<Transition>(*model, property, value);
}

void PropertyManager::submit(Kiln::SmartPtr<Kiln::State::Transition> transition) {
  const auto own = givenBack<Transition>(transition, "IPropertyManager::submit", "a transition");
  if (std::exchange(own->isSubmitted, true))
    throw misuse("IPropertyManager::submit was called with a transition for the second time.");
  trace.record({"transition", {{"pairs", own->pairs}}});
  model->submit(own->pairs);
}

bool PropertyManager::valueAllowed(Kiln::WStringView property, Kiln::WStringView value) {
  return model->allows(property, value);
}

ReferenceHost::ReferenceHost(const World& hostWorld)
    : world(hostWorld),
      documentService(makeDocuments()),
      ticketService(makeTickets(hostWorld.chrome, hostWorld.trace.calls())) {}

void ReferenceHost::showPluginHelp(Kiln::StringView plugin) {
  showHelpTopic(u"chrome://" + Formats::toUtf16(plugin) + u"/locale/help.chm", helpContext());
}

void ReferenceHost::showHelpTopic(Kiln::WStringView url, Kiln::WStringView topic) {
  world.trace.record({"show-help", {{"context", std::u16string(topic.view())}}});
  world.face.showHelp(helpPage(world.chrome, world.strings.locale(), url, topic), std::u16string(topic.view()));
}

Kiln::SmartPtr<Kiln::Services::TextList> ReferenceHost::attributeNames(Kiln::WStringView attribute) {
  return makeTextList(attribute.view() == Formats::lockAttribute ? lockedNames : std::vector<std::u16string>());
}

void ReferenceHost::runJobStep() {
  world.files.guard->release();
  if (const auto name = world.face.askJobStep())
    world.model.submit({{std::u16string(Formats::Prop::overlayImageName), *name}});
}

void ReferenceHost::cancelJob() {
  world.trace.record({"cancel-job", {}});
  world.model.submit({{std::u16string(Formats::Prop::cancelJob), std::u16string(Formats::Value::yes)}});
}

Kiln::SmartPtr<Kiln::XUL::ListData> ReferenceHost::listData() { return make<ListData>(world.strings); }

Kiln::SmartPtr<Kiln::XUL::Alignment> ReferenceHost::alignment(std::int32_t flags) { return make<Alignment>(flags); }

Kiln::SmartPtr<Kiln::XUL::Image> ReferenceHost::image(Kiln::WStringView address, Kiln::WStringView scope) {
  const auto resource = world.chrome.file(address);
  Files::Disk& disk = resource ? Files::realDisk() : world.files.disk;
  const auto file = resource.value_or(Files::pathFromText(address.view()));
  try {
    if (disk.kind(file) != Files::EntryKind::file || !isBitmap(disk.read(file, largestBitmap))) return {};
  } catch (const Files::DiskError&) {
    return {};
  }
  return make<Image>(std::u16string(address.view()), file, std::u16string(scope.view()));
}

Kiln::SmartPtr<Kiln::XUL::Image> ReferenceHost::scaledImage(Kiln::WStringView address, Kiln::WStringView scope,
                                                            float factor) {
  const auto picture = Kiln::smartCast<Image>(image(address, scope));
  if (!picture || factor == 1.0F) return picture;
  const auto resource = world.chrome.file(address);
  Files::Disk& disk = resource ? Files::realDisk() : world.files.disk;
  try {
    const auto sides = bitmapSides(disk.read(picture->file, largestBitmap));
    if (!sides) return {};
    const auto scaled = [factor](int side) { return static_cast<int>(std::lround(static_cast<float>(side) * factor)); };
    return make<Image>(*picture, scaled(sides->width), scaled(sides->height));
  } catch (const Files::DiskError&) {
    return {};
  }
}

Kiln::SmartPtr<Kiln::XUL::Image> ReferenceHost::swatch(Kiln::WStringView colour, std::int32_t width,
                                                       std::int32_t height) {
  if (!isColour(colour) || width <= 0 || height <= 0) return {};
  return make<Image>(std::u16string(colour.view()), width, height);
}

Kiln::WString ReferenceHost::translate(Kiln::WStringView token) { return text(world.strings.resolve(token)); }

Kiln::WString ReferenceHost::lookUp(Kiln::WStringView url, Kiln::WStringView key) {
  const std::u16string address(url.view());
  auto table = tables.find(address);
  if (table == tables.end()) {
    const auto file = world.chrome.file(url);
    std::error_code error;
    const bool exists = file && std::filesystem::exists(*file, error);
    try {
      table = tables.emplace(address, exists ? readStrings(*file) : StringTable()).first;
    } catch (const std::runtime_error& broken) {
      throw failure(broken.what());
    }
  }
  const auto found = table->second.find(referencedName(key));
  return found == table->second.end() ? Kiln::WString() : text(found->second);
}

Kiln::SmartPtr<Kiln::Services::TextList> ReferenceHost::locales(Kiln::WStringView package) {
  return makeTextList(wideNames(world.chrome.locales(Formats::toUtf8(package))));
}

Kiln::WString ReferenceHost::languageName() {
  const std::string& locale = world.strings.locale();
  if (locale == "zh-TW") return text(u"Chinese-Traditional");
  if (locale == "zh-CN") return text(u"Chinese-Simplified");
  if (locale.starts_with("ja")) return text(u"Japanese");
  if (locale.starts_with("de")) return text(u"German");
  if (locale.starts_with("fr")) return text(u"French");
  return text(u"English");
}

bool ReferenceHost::isJapanese() { return languageName().view() == u"Japanese"; }

Kiln::SmartPtr<Kiln::Services::TextList> ReferenceHost::fontNames() {
  const auto names = fonts ? fonts() : std::nullopt;
  return names ? makeTextList(*names) : Kiln::SmartPtr<Kiln::Services::TextList>();
}

Kiln::SmartPtr<Kiln::Services::Path> ReferenceHost::path(Kiln::WStringView name) {
  return makePath(world.files, Files::pathFromText(name.view()));
}

Kiln::SmartPtr<Kiln::Services::FileBackingStoreIO> ReferenceHost::file(Kiln::SmartPtr<Kiln::Services::Path> path) {
  return fileStore(world.files, std::move(path));
}

Kiln::SmartPtr<Kiln::Services::BackingStoreIO> ReferenceHost::resource(Kiln::WStringView url) {
  const auto named = world.chrome.file(url);
  if (!named) throw failure(Formats::toUtf8(url) + " is no address of a resource.");
  return resourceStore(*named);
}

void ReferenceHost::tell(Kiln::WStringView sentence) {
  world.files.guard->release();
  if (hearTold)
    hearTold(Formats::toUtf8(sentence));
  else
    world.face.tell(Formats::toUtf8(sentence));
}

}  // namespace Refhost
