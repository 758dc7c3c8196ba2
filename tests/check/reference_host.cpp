#include "tests/check/reference_host.h"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace Testing {

Kiln::CreatePlugin* PackagedHost::factory = nullptr;

Kiln::UIPlugin* makePlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name, void* reserved,
                           Kiln::SmartPtr<Kiln::Services::Library> library) {
  return PackagedHost::factory(host, std::move(manager), name, reserved, std::move(library));
}

std::filesystem::path thisLibrary() {
#ifdef _WIN32
  HMODULE library = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&thisLibrary), &library);
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(library, path, MAX_PATH);
  return path;
#else
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&thisLibrary), &info) == 0) throw std::runtime_error("no such library");
  return info.dli_fname;
#endif
}

// The model extends one that it is to stand beside.
std::filesystem::path PackagedHost::modelFile() const {
  const std::filesystem::path folder = home / "models";
  constexpr auto replacing = std::filesystem::copy_options::overwrite_existing;
  std::filesystem::create_directories(folder);
  std::filesystem::copy_file(resources / "models" / "standard.xml", folder / "standard.xml", replacing);
  std::filesystem::copy_file(resources / "check" / "content" / "model.xml", folder / "check.xml", replacing);
  return folder / "check.xml";
}

void PackagedHost::open(Kiln::CreatePlugin& createPlugin, Checking::Opened mode) {
  factory = &createPlugin;
  Refhost::Options options;
  options.plugin = thisLibrary();
  options.resources = resources;
  options.model = modelFile().string();
  options.home = home;
  switch (mode) {
    case Checking::Opened::docProp: options.mode = Refhost::Mode::docProp; break;
    case Checking::Opened::pdc: options.mode = Refhost::Mode::pdc; break;
    case Checking::Opened::prePrint: options.mode = Refhost::Mode::prePrint; break;
    case Checking::Opened::rootless: options.mode = Refhost::Mode::rootless; break;
  }
  preferences = std::make_unique<Refhost::Preferences>(options, *this);
  try {
    preferences->open();
  } catch (...) {
    preferences.reset();
    throw;
  }
}

template <class Kind>
Kind& PackagedHost::widget(Kiln::WStringView id) {
  const auto& dialogs = preferences->openDialogs();
  Refhost::WidgetNode* found = dialogs.empty() ? preferences->gui()->find(id) : dialogs.back()->layout().find(id);
  auto* node = dynamic_cast<Kind*>(found);
  if (node == nullptr) throw std::runtime_error("no such widget");
  return *node;
}

void PackagedHost::click(Kiln::WStringView id) {
  auto& node = widget<Refhost::WidgetNode>(id);
  if (auto* button = dynamic_cast<Refhost::Button*>(&node)) button->click();
  if (auto* box = dynamic_cast<Refhost::CheckBox*>(&node)) box->click();
  if (auto* radio = dynamic_cast<Refhost::RadioButton*>(&node)) radio->choose();
}

void PackagedHost::choose(Kiln::WStringView id, std::int32_t item) { widget<Refhost::SelectorNode>(id).choose(item); }

void PackagedHost::type(Kiln::WStringView id, Kiln::WStringView text) {
  widget<Refhost::TextBoxNode>(id).edit(text, Refhost::Edit::typed);
}

void PackagedHost::paste(Kiln::WStringView id, Kiln::WStringView text) {
  widget<Refhost::TextBoxNode>(id).edit(text, Refhost::Edit::pasted);
}

void PackagedHost::leave(Kiln::WStringView id) { widget<Refhost::TextBoxNode>(id).leave(); }

void PackagedHost::scroll(Kiln::WStringView id, std::int32_t position) {
  widget<Refhost::ScrollBar>(id).scroll(position);
}

void PackagedHost::pick(Kiln::WStringView id, std::uint32_t colour) { widget<Refhost::ColorPicker>(id).pick(colour); }

void PackagedHost::acceptDialog() { preferences->openDialogs().back()->accept(); }

void PackagedHost::cancelDialog() { preferences->openDialogs().back()->cancel(); }

void PackagedHost::exportProfile() { preferences->exportProfile("Check", u"True"); }

void PackagedHost::importProfile() { preferences->importProfile("Check", {}); }

Kiln::String PackagedHost::told() { return Refhost::text(std::exchange(firstTold, {})); }

void PackagedHost::runModally(Refhost::Dialog& dialog) {
  user.operateDialog();
  if (dialog.isOpen()) dialog.cancel();
}

void PackagedHost::showFailure(const std::string& sentence) {
  if (firstTold.empty()) firstTold = sentence;
}

}  // namespace Testing
