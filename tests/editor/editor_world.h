// The watermark editor in this host, without a plug-in: user input, and the resulting record.
#pragma once

#include "effect/watermark/editor.h"
#include "host/screen.h"
#include "tests/watermark/store_world.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// A field of a record in UTF-8; "intensity" is the field inside its transparency.
inline std::string fieldOf(const Effect::Node& record, const std::string& name) {
  const auto holder = name == "intensity" ? record->child(Effect::Field::transparency) : record;
  return holder ? Formats::toUtf8(Effect::fieldText(*holder, Formats::toUtf16(name)).view()) : "";
}

inline void setFieldOf(const Effect::Node& record, const std::string& name, const std::string& text) {
  const auto holder = name == "intensity" ? record->childOrNew(Effect::Field::transparency) : record;
  Effect::setField(*holder, Formats::toUtf16(name), Formats::toUtf16(text));
}

// The user's input in the open editor. Texts are UTF-8.
class Hand {
 public:
  Hand(Refhost::Dialog& openDialog, const Effect::Node& editedRecord) : dialog(openDialog), record(editedRecord) {}

  template <class Kind>
  Kind& widget(const std::string& id) {
    auto* found = dynamic_cast<Kind*>(dialog.layout().find(Formats::toUtf16(id)));
    if (found == nullptr) throw std::logic_error("no such widget of that kind: " + id);
    return *found;
  }
  Refhost::WidgetNode& node(const std::string& id) { return widget<Refhost::WidgetNode>(id); }

  bool type(const std::string& id, const std::string& text, Refhost::Edit how = Refhost::Edit::typed) {
    return widget<Refhost::TextBoxNode>(id).edit(Formats::toUtf16(text), how);
  }
  void leave(const std::string& id) { widget<Refhost::TextBoxNode>(id).leave(); }
  void scroll(const std::string& id, int position) { widget<Refhost::ScrollBar>(id).scroll(position); }
  void click(const std::string& id) { widget<Refhost::Button>(id).click(); }
  void choose(const std::string& radio) { widget<Refhost::RadioButton>(radio).choose(); }
  void pick(std::uint32_t colour) { widget<Refhost::ColorPicker>("colpic_WMBrowse").pick(colour); }
  void select(const std::string& list, int index) { widget<Refhost::SelectorNode>(list).choose(index); }
  bool accept() { return dialog.accept(); }
  void cancel() { dialog.cancel(); }

  // The user's reaction to a question of the editor.
  void answer(Refhost::Dialog& question) {
    questions.push_back(Formats::toUtf8(question.url()));
    if (onQuestion) onQuestion(question);
    if (onAnswer) onAnswer();
    saysYes ? static_cast<void>(question.accept()) : question.cancel();
  }

  std::string text(const std::string& id) { return Formats::toUtf8(widget<Refhost::TextBoxNode>(id).content()); }
  int position(const std::string& id) { return widget<Refhost::ScrollBar>(id).position(); }
  bool isChosen(const std::string& radio) { return widget<Refhost::RadioButton>(radio).isChecked(); }
  std::string selected(const std::string& list) {
    auto& selector = widget<Refhost::SelectorNode>(list);
    const auto item = selector.items().at(selector.selection());
    return item ? Formats::toUtf8(item->value().view()) : "";
  }
  Kiln::XUL::ListItem& customColour() { return *widget<Refhost::ComboBox>("cmb_EffWMCol").items().at(10); }
  bool canAccept() { return dialog.ok().isOperable(); }
  const Refhost::PreviewedWatermark& preview() {
    return widget<Refhost::WatermarkPreview>("txt_EffWMText").watermark();
  }

  // The current value of a field of the record.
  std::string field(const std::string& name) { return fieldOf(record, name); }

  Refhost::Dialog& dialog;
  Effect::Node record;
  bool saysYes = false;
  std::function<void()> onAnswer;
  std::function<void(Refhost::Dialog&)> onQuestion;
  std::vector<std::string> questions;  // their addresses
};

// Parameters of a run of the editor.
struct EditorOptions {
  std::string locale = "en-US";
  std::optional<std::vector<std::u16string>> fonts = {{u"Zeta", u"Arial", u"beta"}};
  std::set<std::u16string, std::less<>> without;
  bool hasStyleNames = true;
  std::filesystem::path resources = RESOURCES_FOLDER;
};

// The preferences with the effect tab's layout; the test fills its list.
class EditorWorld : public StoreWorld {
 public:
  explicit EditorWorld(EditorOptions options = {})
      : StoreWorld(std::filesystem::temp_directory_path(), Files::realDisk(), options.locale),
        resources(options.resources),
        layouts(resources, std::move(options.without)),
        gui(Refhost::make<Refhost::Gui>(Refhost::GuiWorld{face, layouts, widgets}, trace)) {
    host.fonts = [names = std::move(options.fonts)] { return names; };
    if (options.hasStyleNames) set(u"kilnworks.watermark.stylename.support", u"True");
    trace.listen([this](const Refhost::TraceEvent& event) { events.push_back(event); });
    gui->loadTab(Effect::Address::tabLayout);
  }

  // A record as read from a file: the NoneRecord with these fields.
  Effect::Node newRecord(const Fields& fields = {{"label", "Text"}, {"stylename", "Name"}}) {
    const auto record = Effect::noneRecord(host, u"");
    for (const auto& [name, text] : fields) setFieldOf(record, name, text);
    return record;
  }

  // Edits the record; whether it was accepted. The dialog is closed when `deeds` returns, as on exit of the program.
  bool edit(const Effect::Node& record, const std::function<void(Hand&)>& deeds, bool isNew = false) {
    std::optional<Hand> hand;
    face.onModal = [&](Refhost::Dialog& dialog) {
      if (hand) return hand->answer(dialog);
      hand.emplace(dialog, record);
      deeds(*hand);
    };
    Kiln::XUL::WatermarkDlg editor({host, manager, gui}, record, isNew);
    editor.run();
    return editor.isAccepted();
  }
  bool edit(const std::function<void(Hand&)>& deeds) { return edit(newRecord(), deeds); }

  // Sets the watermark colours that the model supports.
  void allowColours(bool hasBlack, bool hasOthers) {
    manager->model->setAvailable(u"Watermark-Color", u"Black", hasBlack);
    manager->model->setAvailable(u"Watermark-Color", u"Non-Black", hasOthers);
  }

  Kiln::SmartPtr<Kiln::XUL::GUI> tab() const { return gui; }

  // The tab's list of watermarks, with arbitrary ids.
  Refhost::ListBox& list() { return dynamic_cast<Refhost::ListBox&>(*gui->find(u"lst_selectedWatermark")); }
  Kiln::SmartPtr<Kiln::XUL::ListItem> addToList(const std::u16string& name) {
    const auto item = list().items().append(name, u"WM_" + name);
    list().setData(list().data());
    return item;
  }

  // The host throws while it makes this change of a widget, until the object is gone.
  class FailingChange {
   public:
    FailingChange(EditorWorld& world, const std::string& id, const std::string& operation) {
      world.trace.listen([id, operation, fails = isFailing](const Refhost::TraceEvent& event) {
        if (*fails && event.op == "widget" && Testing::member(event, "id") == id &&
            Testing::member(event, "do") == operation)
          throw std::runtime_error("The host's own.");
      });
    }
    FailingChange(const FailingChange&) = delete;
    FailingChange& operator=(const FailingChange&) = delete;
    ~FailingChange() { *isFailing = false; }

   private:
    std::shared_ptr<bool> isFailing = std::make_shared<bool>(true);
  };

  // "WHAT VALUE" of each preview operation since the last call, in order.
  std::vector<std::string> takePreview() {
    std::vector<std::string> lines;
    for (const auto& event : std::exchange(events, {})) {
      if (event.op != "preview") continue;
      const auto* number = std::get_if<double>(&event.members[1].second);
      const std::string value = number == nullptr ? Testing::member(event, "value") : shortNumber(*number);
      lines.push_back(Testing::member(event, "set") + " " + value);
    }
    return lines;
  }

  std::vector<Refhost::TraceEvent> events;

 private:
  static std::string shortNumber(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    return text.back() == '.' ? text.substr(0, text.size() - 1) : text;
  }

  // Reports failures and continues, like the preferences.
  void dispatch(const std::function<void()>& action) {
    try {
      action();
    } catch (const std::exception& failure) {
      face.failures.emplace_back(failure.what());
    }
  }

  Refhost::ChromeFolders resources;
  Refhost::Screen screen{96};
  Refhost::WidgetWorld widgets{trace, strings, screen.window(), [this](const auto& action) { dispatch(action); },
                               [](Refhost::WidgetNode&) {}};
  Refhost::LayoutReader layouts;
  Kiln::SmartPtr<Refhost::Gui> gui;
};

class Editor : public testing::Test {
 protected:
  EditorWorld world;
};
