// A plug-in with a button for each situation that a script must handle: nested dialogs, vetoes, exceptions.
#include "formats/text.h"
#include "kiln/exception.h"
#include "kiln/plugin.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using namespace Kiln;
using namespace Kiln::XUL;

constexpr const char16_t* outerUrl = u"chrome://fake/content/dlg_outer.xul";
constexpr const char16_t* innerUrl = u"chrome://fake/content/dlg_inner.xul";
constexpr const char16_t* questionUrl = u"chrome://fake/content/dlg_question.xul";

class FakePlugin final : public UIPlugin {
 public:
  FakePlugin(Host& lender, const String& name, const PropertyManager& manager, SmartPtr<Services::Library> library)
      : UIPlugin(lender, name, manager, library) {
    begin(u"createPlugin");
  }

  void create() override { begin(u"create"); }
  void initialise() override { begin(u"initialise"); }
  bool rootlessActivation() override {
    begin(u"rootlessActivation");
    return false;
  }

  void configureUI(SmartPtr<GUI> given) override {
    begin(u"configureUI");
    gui = given;
    gui->load(u"chrome://fake/content/tab.xul");
    connect(*gui->readySignal(), *this, &FakePlugin::onReady);
  }

 private:
  using Clicked = EventArg<Button>;

  void onReady(SmartPtr<GUI>) {
    begin(u"ready");
    follow(gui, u"btn_modal", &FakePlugin::onModal);
    follow(gui, u"btn_two", &FakePlugin::onTwo);
    follow(gui, u"btn_show", &FakePlugin::onShow);
    follow(gui, u"btn_throw", &FakePlugin::onThrow);
    follow(gui, u"btn_throw_after", &FakePlugin::onThrowAfter);
    follow(gui, u"btn_until_ok", &FakePlugin::onUntilOk);
    follow(gui, u"btn_missing", &FakePlugin::onMissing);
    follow(gui, u"btn_job", &FakePlugin::onJob);
    const auto box = smartCast<TextBox>(gui->widgetById(u"txt_name"));
    connect(*box->typingSignal(), *this, &FakePlugin::onTyping);
    connect(*box->blurSignal(), *this, &FakePlugin::onBlur);
    connect(*smartCast<ScrollBar>(gui->widgetById(u"scr_angle"))->scrollSignal(), *this, &FakePlugin::onScroll);
    connect(*smartCast<ColorPicker>(gui->widgetById(u"pic_colour"))->changeSignal(), *this, &FakePlugin::onPick);
    const auto image = smartCast<ImageBox>(gui->widgetById(u"img_slot"));
    connect(*image->dropSignal(), *this, &FakePlugin::onText);
    connect(*image->menuSignal(), *this, &FakePlugin::onText);
    connect(*gui->tabPanel()->preAcceptSignal(), *this, &FakePlugin::onPreAccept);
    connect(*gui->tabPanel()->helpSignal(), *this, &FakePlugin::onHelp);
    connect(*propertyManager()->modelProperties()->selectionChangeSignal(u"Colour"), *this, &FakePlugin::onColour);
    connect(*propertyManager()->profileImportSignal(), *this, &FakePlugin::onImport);
    connect(*propertyManager()->profileExportSignal(), *this, &FakePlugin::onExport);
    const std::u16string opening = setting(u"fake.opening");
    if (opening == u"modal") runOuter();
    if (opening == u"throw") fail("thrown while opening");
    if (opening == u"modal, throw") {
      runOuter();
      fail("thrown after the dialog");
    }
  }

  void onHelp(EventArg<TabPanel>) { begin(u"help"); }
  void onImport(ImportExportEventArg) { begin(u"profile import"); }
  void onExport(ImportExportEventArg) { begin(u"profile export"); }

  void onColour(ModelSelectionChange& change) {
    const std::u16string wanted = setting(u"fake.red");
    if (wanted == u"answers") return answer(change.value.view());
    if (change.value.view() != u"Red") return;
    begin(u"Red");
    if (wanted == u"submits twice") submitTwice();
    if (wanted == u"asks") runQuestion();
    if (wanted == u"shows") showOuter();
  }

  // Submits the other colour, as often as a setting tells.
  void answer(std::u16string_view colour) {
    if (answers++ >= std::stoi(Formats::toUtf8(setting(u"fake.answers")))) return;
    propertyManager()->submit(propertyManager()->transition(u"Colour", colour == u"Red" ? u"Black" : u"Red"));
  }

  void submitTwice() {
    const auto transition = propertyManager()->transition(u"CancelJob", u"True");
    propertyManager()->submit(transition);
    propertyManager()->submit(transition);
  }

  void onModal(Clicked) { runOuter(); }

  void onTwo(Clicked) {
    runOuter();
    runQuestion();
    log(u"both are closed");
  }

  void onShow(Clicked) { showOuter(); }

  void onThrow(Clicked) { fail("thrown by the button"); }

  void onThrowAfter(Clicked) {
    runQuestion();
    fail("thrown after the question");
  }

  void onUntilOk(Clicked) {
    while (!runQuestion()) log(u"asked again");
  }

  void onMissing(Clicked) { gui->openDialog(u"chrome://fake/content/missing.xul"); }

  void onJob(Clicked) { host().runJobStep(); }

  void onTyping(SmartPtr<TextChangeEventArg> change) {
    if (change->text().view() == u"no") change->refuse();
    if (change->text().view() == u"throw") fail("thrown while typing");
  }

  void onBlur(EventArg<TextBox> event) { event.source().setText(u"left"); }

  void onScroll(EventArg<ScrollBar> event) { log(event.source().position() == 180 ? u"end" : u"moved"); }

  void onPick(EventArg<ColorPicker> event) { log(event.source().colour() == 0xFF0080 ? u"pink" : u"another"); }

  void onText(WString text) { log(text); }

  void onPreAccept(SmartPtr<PreAcceptPanel> panel) {
    begin(u"pre-accept");
    if (isChecked(gui, u"chk_veto")) panel->veto();
    if (isChecked(gui, u"chk_ask") && !runQuestion()) panel->veto();
  }

  void showOuter() {
    outer = gui->openDialog(outerUrl);
    connect(*outer->cancelSignal(), *this, &FakePlugin::onShownCancel);
    outer->show();
  }

  // Only a dialog that Red has opened asks before it goes.
  void onShownCancel(SubDialogEventArg&) {
    if (!setting(u"fake.red").empty()) runQuestion();
  }

  void runOuter() {
    outer = gui->openDialog(outerUrl);
    follow(outer, u"btn_inner", &FakePlugin::onInner);
    follow(outer, u"btn_throw", &FakePlugin::onThrow);
    follow(outer, u"btn_disable_ok", &FakePlugin::onDisableOk);
    connect(*outer->okSignal(), *this, &FakePlugin::onOuterOk);
    connect(*outer->cancelSignal(), *this, &FakePlugin::onOuterCancel);
    outer->runModally();
    log(u"outer is closed");
  }

  void onInner(Clicked) {
    outer->openDialog(innerUrl)->runModally();
    log(u"inner is closed");
  }

  void onDisableOk(Clicked) { outer->okButton()->disable(); }

  void onOuterOk(SubDialogEventArg& event) {
    if (isChecked(outer, u"chk_veto")) event.vetoClose();
    if (isChecked(outer, u"chk_ask") && !runQuestion()) event.vetoClose();
    if (isChecked(outer, u"chk_throw")) fail("thrown by OK");
  }

  void onOuterCancel(SubDialogEventArg&) {
    if (isChecked(outer, u"chk_throw_cancel")) fail("thrown by Cancel");
  }

  bool runQuestion() {
    isAnswered = false;
    const SmartPtr<SubDialog> question = gui->openDialog(questionUrl);
    connect(*question->okSignal(), *this, &FakePlugin::onAnswered);
    question->runModally();
    return isAnswered;
  }

  void onAnswered(SubDialogEventArg&) { isAnswered = true; }

  template <class Place>
  void follow(const SmartPtr<Place>& place, const char16_t* id, void (FakePlugin::*handler)(Clicked)) {
    connect(*smartCast<Button>(place->widgetById(id))->clickSignal(), *this, handler);
  }

  template <class Place>
  static bool isChecked(const SmartPtr<Place>& place, const char16_t* id) {
    return smartCast<CheckBox>(place->widgetById(id))->isChecked();
  }

  std::u16string setting(const char16_t* key) {
    const auto property = propertyManager()->configuration()->child(key);
    return property ? property->wideValue().str() : std::u16string();
  }

  // A call of the host begins: the one that a setting names fails, in the way that another names.
  void begin(std::u16string_view call) {
    if (setting(u"fake.fails") != call) return;
    const std::u16string how = setting(u"fake.throws");
    if (how == u"a number") throw 42;
    if (how == u"no message") fail("");
    if (how == u"the standard's") throw std::runtime_error("thrown as any library throws");
    if (how == u"the host's") host().resource(u"nothing");
    if (how == u"the host's, repeated") repeatTheHosts();
    fail("thrown by the plug-in");
  }

  void repeatTheHosts() {
    std::string sentence;
    try {
      host().file(host().path(setting(u"kilnworks.user.path").c_str()))->readAll();
    } catch (const Exception& problem) {
      sentence = problem.what();
    }
    fail((sentence + " Mend it.").c_str());
  }

  void log(WStringView text) { smartCast<Label>(gui->widgetById(u"lbl_log"))->setLabel(text); }

  [[noreturn]] void fail(const char* sentence) { throw Exception(host().allocator(), sentence); }

  SmartPtr<GUI> gui;
  SmartPtr<SubDialog> outer;
  bool isAnswered = false;
  int answers = 0;
};

}  // namespace

KILN_EXPORT UIPlugin* createPlugin(Host& host, PropertyManager manager, const String& name, void* reserved,
                                   SmartPtr<Services::Library> library) {
  if (answerVersion(name, reserved)) return nullptr;
  return new (host.allocator()) FakePlugin(host, name, manager, library);
}
