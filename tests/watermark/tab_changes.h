// The tab with three watermarks in a new home, and the user's input in its dialogs.
#pragma once

#include "store_world.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

inline constexpr const char16_t* textBox = u"txt_EffWMTxtBox";
inline constexpr const char16_t* nameBox = u"txt_EffWMStyleName";
inline constexpr const char16_t* angleBox = u"txt_EffWMAngle";

inline constexpr const char* threeRecords = R"(<Watermarks>
  <WM_1><label>one</label><value>WM_1</value></WM_1>
  <WM_2><label>two</label><value>WM_2</value><angle>10</angle></WM_2>
  <WM_3><label>three</label><value>WM_3</value></WM_3>
</Watermarks>)";

// The tab, and user input in its dialogs. Watermarks have separate names.
class Changes : public testing::Test {
 protected:
  Changes() {
    std::filesystem::create_directories(folder.path / "home" / "user");
    putUserFile(threeRecords);
  }

  void putUserFile(const std::string& bytes) { Testing::writeFile(userFile(), bytes); }
  std::filesystem::path userFile() const { return folder.path / "home" / "user" / "ZVeffect.xml"; }

  void open(Refhost::Options options = Testing::builtOptions()) {
    options.home = folder.path / "home";
    options.settings = {{u"kilnworks.watermark.stylename.support", u"True"}};
    world = std::make_unique<Testing::World>(options);
    world->take();
  }

  // What another process has put into the user's file since the tab opened.
  void addAsAnotherProcess(const std::string& id, const std::string& name) {
    std::string bytes = bytesOf(userFile());
    bytes.insert(bytes.rfind("</Watermarks>"), element(id, {{"label", name}, {"value", id}}));
    putUserFile(bytes);
  }

  using Edits = std::vector<std::pair<std::u16string, std::u16string>>;

  // The input for the next dialog's boxes before it is accepted. Questions are just accepted.
  void willAccept(const Edits& edits) {
    world->face.onModal = [this, edits](Refhost::Dialog& dialog) {
      if (auto* name = dynamic_cast<Refhost::TextBox*>(dialog.layout().find(nameBox))) {
        nameAtOpening = Formats::toUtf8(name->content());
        for (const auto& [box, text] : edits)
          EXPECT_TRUE(dynamic_cast<Refhost::TextBoxNode&>(*dialog.layout().find(box)).edit(text, Refhost::Edit::typed));
      }
      if (dialog.url() == Effect::Address::overwrite) {
        questions.push_back(nameIn(dialog));
        if (!saysYes) return dialog.cancel();
      }
      dialog.accept();
    };
  }

  // The name that the question tells; empty where it tells none.
  static std::string nameIn(Refhost::Dialog& question) {
    const auto* name = dynamic_cast<Refhost::Label*>(question.layout().find(u"txt_OverwriteName"));
    return name != nullptr && name->isVisible() ? Formats::toUtf8(name->label()) : "";
  }

  void willName(const std::u16string& name) { willAccept({{textBox, name}}); }
  void willCancel() {
    world->face.onModal = [](Refhost::Dialog& dialog) { dialog.cancel(); };
  }

  void click(std::u16string_view id) { world->widget<Refhost::Button>(id).click(); }
  Refhost::ListBox& list() { return world->widget<Refhost::ListBox>(u"lst_selectedWatermark"); }
  std::string selected() { return Formats::toUtf8(list().selectedItem()->value().view()); }
  bool isEnabled(std::u16string_view id) { return world->preferences.gui()->find(id)->isEnabled(); }

  std::vector<std::string> names() {
    std::vector<std::string> found;
    for (std::int32_t i = 0; i < list().items().count(); ++i)
      found.push_back(Formats::toUtf8(list().items().at(i)->text().view()));
    return found;
  }

  // The names that another store reads from the disk.
  std::vector<std::string> namesOnDisk() {
    StoreWorld other(folder.path / "home");
    std::vector<std::string> found;
    for (const auto& [id, name] : other.namesIn(userFile())) found.push_back(name);
    return found;
  }

  Testing::TemporaryFolder folder;
  std::unique_ptr<Testing::World> world;
  std::string nameAtOpening = "not opened";
  std::vector<std::string> questions;  // the names that questions were about
  bool saysYes = true;                 // to questions
};
