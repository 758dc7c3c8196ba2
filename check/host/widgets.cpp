// Widgets, and the dialogs and tabs that they are in.
#include "check/host/groups.h"
#include "check/host/play.h"
#include "formats/text.h"

#include <map>
#include <set>

namespace Checking {
namespace {

using namespace Kiln::XUL;
using Kiln::SmartPtr;

using Interfaces = std::set<std::string>;

const std::map<std::u16string, Interfaces>& kinds() {
  static const std::map<std::u16string, Interfaces> all = {{u"lbl", {"Label"}},
                                                           {u"img", {"ImageBox"}},
                                                           {u"btn", {"Button"}},
                                                           {u"chk", {"Toggle", "CheckBox"}},
                                                           {u"rad_a", {"Toggle", "RadioButton"}},
                                                           {u"lst", {"Selector", "ListBox"}},
                                                           {u"cmb", {"Selector", "ComboBox"}},
                                                           {u"txt", {"TextBox"}},
                                                           {u"int", {"TextBox", "IntegerTextBox"}},
                                                           {u"scr", {"ScrollBar"}},
                                                           {u"col", {"ColorPicker"}},
                                                           {u"pre", {"WMPreview"}},
                                                           {u"box", {"Container"}}};
  return all;
}

void tellsKinds(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    Interfaces names = {"nothing", ""};
    for (const auto& [id, own] : kinds()) names.insert(own.begin(), own.end());
    for (const auto& [id, own] : kinds()) {
      const auto widget = play.gui()->widgetById(id);
      demand(bool(widget), "The tab has no widget " + Formats::toUtf8(id) + ".");
      demand(widget->id().view() == id, "A widget has another id than the one that it was found by.");
      for (const std::string& name : names)
        demand((widget->queryInterface(name) != nullptr) == own.contains(name),
               "The widget " + Formats::toUtf8(id) + (own.contains(name) ? " is no " : " says that it is a ") + name +
                   ".");
    }
  });
}

void keepsEnabledState(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    for (const auto& [id, own] : kinds()) {
      const auto widget = play.gui()->widgetById(id);
      widget->disable();
      demand(!widget->isEnabled(), "The widget " + Formats::toUtf8(id) + " is enabled after disable.");
      widget->setEnabled(true);
      demand(widget->isEnabled(), "The widget " + Formats::toUtf8(id) + " is disabled after setEnabled(true).");
    }
  });
}

void clicksCheckBoxes(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto box = play.widget<CheckBox>(u"chk");
    play.follow<EventArg<Toggle>>(box->changeSignal(), [&](const auto&) { play.note("change"); });
    play.follow<EventArg<Toggle>>(box->clickSignal(), [&](const EventArg<Toggle>& event) {
      play.note(event.source().isChecked() ? "click, checked" : "click, unchecked");
    });
    play.log.clear();
    box->setChecked(true);
    box->setChecked(false);
    demandLog(play.log, {}, "The signals of setChecked");
  });
  play.log.clear();
  play.user().click(u"chk");
  demandLog(play.log, {"click, checked", "change"}, "The signals of a click");
}

void keepsSelections(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto list = play.widget<ListBox>(u"lst");
    play.follow<EventArg<ListBox>>(list->changeSignal(), [&](const auto&) { play.note("change"); });
    play.log.clear();
    list->select(1);
    const auto data = play.host().listData();
    data->append(u"New", u"0");
    data->insert(1, list->data()->at(1));
    list->setData(data);
    demand(list->selectedIndex() == 1, "setData does not keep the selected item, which is among the new ones.");
    demand(!list->selectValue(u"9") && list->selectedIndex() == 1, "selectValue changes the selection for no item.");
    demand(list->selectValue(u"0") && list->selectedItem()->text().view() == u"New", "selectValue selects no item.");
    list->select(9);
    demand(list->selectedIndex() == -1 && !list->selectedItem(), "An item is selected after one that is not there.");
    list->select(0);
    demandLog(play.log, {}, "The signals of select and setData");
    demand(exceptionOf([&] { data->insert(9, data->at(0)); }).has_value(), "insert takes an index out of range.");
  });
  play.log.clear();
  play.user().choose(u"lst", 0);
  play.user().choose(u"lst", 0);
  demandLog(play.log, {"change", "change"}, "The signals of a choice, and of the same once more");
}

void typesTexts(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto box = play.widget<TextBox>(u"txt");
    play.follow<SmartPtr<TextChangeEventArg>>(box->typingSignal(), [&](const SmartPtr<TextChangeEventArg>& event) {
      play.note("typing " + Formats::toUtf8(event->source()->text().view()) + " to " +
                Formats::toUtf8(event->text().view()));
      if (event->text().view() == u"No") event->refuse();
      if (event->text().view() == u"Same") event->source()->setText(u"Same");
    });
    play.follow<SmartPtr<TextChangeEventArg>>(box->pastingSignal(), [&](const auto&) { play.note("pasting"); });
    play.follow<EventArg<TextBox>>(box->blurSignal(), [&](const auto&) { play.note("blur"); });
    play.log.clear();
    box->setText(u"A");
    box->setText(u"No");
    box->setText(u"Same");
    demandLog(play.log, {"typing Text to A", "typing A to No", "typing A to Same"}, "The signals of setText");
    demand(box->text().view() == u"Same", "A text box has another text than the one that was set.");
  });
  play.log.clear();
  play.user().type(u"txt", u"B");
  play.user().paste(u"txt", u"C");
  play.user().leave(u"txt");
  demandLog(play.log, {"typing Same to B", "pasting", "blur"}, "The signals of what is typed, pasted and left");
}

void movesScrollBars(const Subject& subject) {
  Play play(subject);
  play.openAndTry([&] {
    const auto bar = play.widget<ScrollBar>(u"scr");
    play.follow<EventArg<ScrollBar>>(bar->scrollSignal(), [&](const EventArg<ScrollBar>& event) {
      play.note(std::to_string(event.source().position()));
      event.source().setPosition(event.source().position());
    });
    play.log.clear();
    bar->setPosition(20);
    bar->setPosition(1000);
    demandLog(play.log, {"20", "100"}, "The signals of setPosition");
  });
  play.log.clear();
  play.user().scroll(u"scr", 30);
  demandLog(play.log, {"30"}, "The signals of a bar that the user moves");
}

void runsDialogs(const Subject& subject) {
  Play play(subject);
  bool vetoes = false;
  SmartPtr<Widget> inner;
  const auto run = [&] {
    const auto dialog = play.gui()->openDialog(u"chrome://check/content/dialog.xul");
    demand(bool(dialog), "The dialog of the checks cannot be loaded.");
    inner = dialog->widgetById(u"btn_inner");
    demand(bool(inner) && bool(dialog->parentWidgetById(u"btn")) && bool(dialog->okButton()),
           "A dialog does not find its widgets, or those of the preferences.");
    play.follow<SubDialogEventArg&>(dialog->okSignal(), [&](SubDialogEventArg& event) {
      play.note("ok");
      if (vetoes) event.vetoClose();
    });
    play.follow<SubDialogEventArg&>(dialog->cancelSignal(), [&](SubDialogEventArg&) { play.note("cancel"); });
    dialog->runModally();
    play.note("closed");
  };
  play.onDialog = [&] {
    play.note("dialog");
    vetoes = true;
    play.user().acceptDialog();
    vetoes = false;
    play.user().acceptDialog();
  };
  play.openAndTry([&] {
    play.log.clear();
    run();
    demandLog(play.log, {"dialog", "ok", "ok", "closed"}, "A dialog that is accepted, after a veto");
    play.onDialog = [&] { play.user().cancelDialog(); };
    play.log.clear();
    run();
    demandLog(play.log, {"cancel", "closed"}, "A dialog that is cancelled");
    inner->disable();
    inner->setVisible(true);
    inner = nullptr;
  });
}

void nestsDialogs(const Subject& subject) {
  Play play(subject);
  SmartPtr<SubDialog> outer;
  const auto openDialog = [&] {
    const auto dialog = play.gui()->openDialog(u"chrome://check/content/dialog.xul");
    demand(bool(dialog), "A dialog cannot be opened while another one is open.");
    return dialog;
  };
  const auto operateInner = [&] {
    play.note("inner");
    play.user().acceptDialog();
  };
  play.openAndTry([&] {
    outer = openDialog();
    play.follow<EventArg<Button>>(smartCast<Button>(outer->widgetById(u"btn_inner"))->clickSignal(), [&](const auto&) {
      play.onDialog = operateInner;
      const auto inner = openDialog();
      play.follow<SubDialogEventArg&>(inner->okSignal(), [&](SubDialogEventArg&) { play.note("inner ok"); });
      inner->runModally();
      play.note("inner closed");
    });
    play.follow<SubDialogEventArg&>(outer->cancelSignal(), [&](SubDialogEventArg&) { play.note("outer cancel"); });
    play.onDialog = [&] {
      play.user().click(u"btn_inner");
      play.note("outer");
      play.user().cancelDialog();
    };
    play.log.clear();
    outer->runModally();
    outer = nullptr;
    demandLog(play.log, {"inner", "inner ok", "inner closed", "outer", "outer cancel"},
              "A dialog that is opened by a button of another one");
  });
}

void asksBeforeItAccepts(const Subject& subject) {
  Play play(subject);
  bool vetoes = true;
  play.openAndTry([&] {
    const auto panel = play.gui()->tabPanel();
    demand(panel == play.gui()->tabPanel(), "tabPanel returns another object each time.");
    play.follow<SmartPtr<PreAcceptPanel>>(panel->preAcceptSignal(), [&](const SmartPtr<PreAcceptPanel>& asked) {
      play.note("pre-accept");
      if (vetoes) asked->veto();
    });
    play.follow<EventArg<TabPanel>>(panel->helpSignal(), [&](const auto&) { play.note("help"); });
  });
  play.log.clear();
  play.user().help();
  demand(!play.user().accept(), "The preferences are accepted though the plug-in has refused.");
  vetoes = false;
  demand(play.user().accept(), "The preferences are not accepted.");
  demandLog(play.log, {"help", "pre-accept", "pre-accept"}, "The signals of help, and of OK");
}

}  // namespace

std::vector<Check> widgetChecks() {
  return {{"widgets/kinds", "has widgets of every kind, and tells their kinds by name", tellsKinds},
          {"widgets/enabled", "keeps each widget's enabled state", keepsEnabledState},
          {"widgets/check-box", "changes the mark, then fires the click, then the change", clicksCheckBoxes},
          {"widgets/list", "keeps the selection, silently, and fires for each choice of the user", keepsSelections},
          {"widgets/text-box", "fires before a text changes, and lets it be refused", typesTexts},
          {"widgets/scroll-bar", "fires when a scroll bar moves, within its range", movesScrollBars},
          {"dialogs/modal", "runs a dialog until it closes, and asks before it closes by OK", runsDialogs},
          {"dialogs/nested", "runs a dialog on top of another one, which goes on afterwards", nestsDialogs},
          {"dialogs/preferences", "asks before it accepts the preferences", asksBeforeItAccepts}};
}

}  // namespace Checking
