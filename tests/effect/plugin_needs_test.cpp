// The description of the plug-in: it has every name that the plug-in uses, and the plug-in fails without the mandatory
// ones alone.
#include "formats/names.h"
#include "formats/text.h"
#include "host/gui.h"
#include "host/plugin_description.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"
#include "kiln/version.h"
#include "tests/effect/made_home.h"
#include "tests/files/forwarding_disk.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <span>

namespace {

namespace fs = std::filesystem;
using Formats::toUtf8;
using Refhost::Mode;
using Refhost::Need;
using Names = std::set<std::string>;

const Refhost::PluginDescription& plugin() {
  static const auto description =
      Refhost::describePlugin(Refhost::ChromeFolders(RESOURCES_FOLDER), fs::path(PLUGIN_FILE)).value();
  return description;
}

Names namesOf(const std::vector<Refhost::NeededName>& needed) {
  Names names;
  for (const auto& [name, need] : needed) names.insert(toUtf8(name));
  return names;
}

// The names that a namespace of formats/names.h declares.
Names vocabulary(const std::string& nameSpace) {
  const std::string bytes = Testing::bytesOf(fs::path(SOURCE_FOLDER) / "formats" / "names.h");
  const auto start = bytes.find("namespace " + nameSpace + " {");
  const std::string body = bytes.substr(start, bytes.find("}  // namespace " + nameSpace) - start);
  static const std::regex text("u\"([^\"]*)\"");
  Names names;
  for (std::sregex_iterator each(body.begin(), body.end(), text), end; each != end; ++each) names.insert((*each)[1]);
  return names;
}

// What `nameSpace` declares, and each page effect's name of that kind.
Names withPageEffects(const std::string& nameSpace, Formats::Name Formats::PageEffect::* name) {
  Names names = vocabulary(nameSpace);
  for (const Formats::PageEffect& effect : Formats::PageEffects::all) names.insert(toUtf8(effect.*name));
  return names;
}

TEST(PluginNeeds, AreThoseOfThePluginThatIsBuilt) {
  EXPECT_EQ(plugin().name, Formats::pluginName);
  EXPECT_EQ(plugin().contract,
            std::to_string(Kiln::contractVersion.major) + "." + std::to_string(Kiln::contractVersion.minor));
  EXPECT_EQ(plugin().library + fs::path(PLUGIN_FILE).extension().u16string(), fs::path(PLUGIN_FILE).filename());
}

TEST(PluginNeeds, NameTheWholeVocabularyAndNothingElse) {
  EXPECT_EQ(namesOf(plugin().properties), withPageEffects("Prop", &Formats::PageEffect::property));
  EXPECT_EQ(namesOf(plugin().widgets), withPageEffects("WidgetId", &Formats::PageEffect::box));
  EXPECT_EQ(namesOf(plugin().settings), vocabulary("Setting"));
  EXPECT_EQ(namesOf(plugin().customisation), vocabulary("Customisation"));
}

// A property of the vocabulary is one that the plug-in's sources or its ticket schema name.
TEST(PluginNeeds, NameNoPropertyThatNothingUses) {
  Names constants;
  static const std::regex constant("Prop::(\\w+)");
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_FOLDER) / "effect")) {
    if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
    const std::string code = Testing::bytesOf(entry.path());
    for (std::sregex_iterator each(code.begin(), code.end(), constant), end; each != end; ++each)
      constants.insert((*each)[1]);
  }
  const std::string names = Testing::bytesOf(fs::path(SOURCE_FOLDER) / "formats" / "names.h");
  const std::string schema = Testing::bytesOf(fs::path(SOURCE_FOLDER) / "effect" / "content" / "schema_effect.xml");
  for (const std::string& property : vocabulary("Prop")) {
    std::smatch declared;
    ASSERT_TRUE(std::regex_search(names, declared, std::regex("Name (\\w+) = u\"" + property + "\""))) << property;
    EXPECT_TRUE(constants.contains(declared[1]) || schema.find("property=\"" + property + "\"") != schema.npos)
        << property;
  }
}

// The resources of this build without a description of the plug-in, so that any model opens.
const fs::path& undescribed() {
  static const Testing::TemporaryFolder folder;
  static const fs::path resources = [] {
    Testing::copyResources(folder.path / "resources");
    fs::remove(folder.path / "resources" / "effect" / "content" / "plugin.xml");
    return folder.path / "resources";
  }();
  return resources;
}

// The standard model without one property.
std::string modelWithout(std::u16string_view property) {
  const auto model = Refhost::readModel(fs::path(RESOURCES_FOLDER) / "models", "standard");
  std::string xml = "<model name='less' label='Less'>";
  for (const auto& each : model.properties) {
    if (each.name == property) continue;
    xml += "<property name='" + toUtf8(each.name) + "' value='" + toUtf8(each.defaultValue) + "'";
    if (each.isContext) xml += " context='true'";
    if (!each.feature.empty() && each.feature != property) xml += " feature='" + toUtf8(each.feature) + "'";
    xml += ">";
    for (const auto& option : each.options) xml += "<option value='" + toUtf8(option) + "'/>";
    xml += "</property>";
  }
  return xml + "</model>";
}

// The real disk, without the waits for what a loss of power could take.
class UnsyncedDisk final : public ForwardingDisk {
 public:
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    return std::make_unique<UnsyncedFile>(disk.create(temporary, target));
  }
  void syncFolder(const Path&) override {}

 private:
  class UnsyncedFile final : public File {
   public:
    explicit UnsyncedFile(std::unique_ptr<File> realFile) : file(std::move(realFile)) {}

    void write(std::string_view bytes) override { file->write(bytes); }
    void sync() override {}
    void close() override { file->close(); }

   private:
    std::unique_ptr<File> file;
  };
};

// One run of the preferences, in which a user and the host do all that reaches the plug-in.
class Run {
 public:
  Run(Refhost::Options options, std::optional<std::u16string> jobStep, bool agrees)
      : preferences(std::move(options), face) {
    face.jobStep = std::move(jobStep);
    face.onModal = [agrees](Refhost::Dialog& dialog) { agrees ? void(dialog.accept()) : dialog.cancel(); };
    preferences.open();
  }

  void doEverything() {
    for (const auto& property : preferences.model().description().properties)
      for (const auto& option : property.options) {
        preferences.set(property.name, option);
        preferences.setAvailable(property.name, option, false);
        preferences.setAvailable(property.name, option, true);
      }
    Refhost::walk(*preferences.gui()->tabs().back().root, [](Refhost::WidgetNode& widget) { operate(widget); });
    preferences.refreshStores();
    preferences.exportProfile("profile", u"True");
    preferences.loadTicket(preferences.ticket(), "ticket.xml");
    preferences.accept();
  }

  bool hasFailed() const { return !face.failures.empty(); }

 private:
  static void operate(Refhost::WidgetNode& widget) {
    if (auto* box = dynamic_cast<Refhost::CheckBox*>(&widget)) {
      box->click();
      box->click();
    }
    if (auto* list = dynamic_cast<Refhost::SelectorNode*>(&widget))
      for (int i = list->items().count() - 1; i >= 0; --i) list->choose(i);
    if (auto* button = dynamic_cast<Refhost::Button*>(&widget)) button->click();
  }

  Testing::RecordingFace face;
  Refhost::Preferences preferences;
};

struct Case {
  Mode mode;
  std::u16string printJob;
  std::optional<std::u16string> jobStep;
  bool agrees;
};

// The ways in which a host opens the plug-in: for the user, for the job, and while a job is captured as an overlay,
// under a new name, one that is taken, and none.
const std::vector<Case> cases = {
    {Mode::docProp, u"", {}, true},
    {Mode::docProp, u"", {}, false},
    {Mode::pdc, u"", {}, true},
    {Mode::rootless, u"", {}, true},
    {Mode::docProp, u"Overlay", u"New", true},
    {Mode::docProp, u"Overlay", u"Zebra", false},
    {Mode::prePrint, u"Overlay", u"New", true},
    {Mode::prePrint, u"Overlay", u"Zebra", false},
    {Mode::prePrint, u"Overlay", {}, true},
};

// Whether the plug-in fails in one of the first cases; `adjust` changes the options.
template <class Adjust>
bool fails(const Adjust& adjust, std::size_t count = cases.size()) {
  for (const Case& each : std::span(cases).first(count)) {
    const Testing::MadeHome home;
    Refhost::Options options = Testing::builtOptions();
    options.resources = undescribed();
    UnsyncedDisk disk;
    options.disk = &disk;
    options.home = home.path();
    options.mode = each.mode;
    options.withoutWidgets = {u"cmb_DevPaperSize", u"cmb_DevColourMode", u"cmb_DevNin1"};  // the host's own needs
    if (!each.printJob.empty()) options.properties = {{u"PrintJob", each.printJob}};
    adjust(options);
    try {
      Run run(std::move(options), each.jobStep, each.agrees);
      if (each.mode == Mode::docProp || each.mode == Mode::pdc) run.doEverything();
      if (run.hasFailed()) return true;
    } catch (const std::runtime_error&) {
      return true;
    }
  }
  return false;
}

TEST(PluginNeeds, AreMandatoryForThePropertiesThatThePluginFailsWithout) {
  EXPECT_FALSE(fails([](Refhost::Options&) {}));
  const Testing::TemporaryFolder folder;
  for (const auto& [name, need] : plugin().properties) {
    const fs::path model = folder.path / "less.xml";
    Testing::writeFile(model, modelWithout(name));
    const bool isMandatory = fails([&, &missing = name](Refhost::Options& options) {
      options.model = model.string();
      std::erase_if(options.properties, [&missing](const auto& pair) { return pair.first == missing; });
    });
    EXPECT_EQ(need == Need::mandatory, isMandatory) << toUtf8(name);
  }
}

TEST(PluginNeeds, AreOptionalForEveryWidget) {
  for (const auto& [name, need] : plugin().widgets) {
    EXPECT_FALSE(fails([&id = name](Refhost::Options& options) { options.withoutWidgets.insert(id); }, 2))
        << toUtf8(name);
    EXPECT_EQ(need, Need::optional) << toUtf8(name);
  }
}

TEST(PluginNeeds, AreMandatoryForTheSettingsThatThePluginFailsWithout) {
  for (const auto& [name, need] : plugin().settings) {
    EXPECT_EQ(need == Need::mandatory,
              fails([&key = name](Refhost::Options& options) { options.settings.emplace_back(key, std::nullopt); }))
        << toUtf8(name);
  }
}

TEST(PluginNeeds, AreOptionalForTheXmlCustomisation) {
  for (const auto& [name, need] : plugin().customisation) EXPECT_EQ(need, Need::optional) << toUtf8(name);
}

}  // namespace
