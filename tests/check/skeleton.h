// A small plug-in that honours the contract: a switch, a label that follows it, and a dialog. Each plug-in below
// broken/ overrides what it breaks.
#pragma once

#include "kiln/plugin.h"

namespace Broken {

using namespace Kiln;
using namespace Kiln::XUL;

class Sound : public UIPlugin, public PTPlugin {
 public:
  Sound(Host& lender, const String& name, const PropertyManager& manager, SmartPtr<Services::Library> library)
      : UIPlugin(lender, name, manager, std::move(library)),
        PTPlugin(lender) {}

  void create() override {}
  void initialise() override {}
  bool rootlessActivation() override {
    connect(*properties()->selectionChangeSignal(u"Switch"), *this, &Sound::onSwitchWithoutTab);
    return false;
  }
  void configureUI(SmartPtr<GUI> given) override {
    const std::u16string mode = setting(u"UIMode");
    if (mode == u"DocProp" || mode == u"PDC") {
      gui = std::move(given);
      gui->load(layout());
      connect(*gui->readySignal(), *this, &Sound::onReady);
    } else if (mode == u"PrePrint") {
      gui = std::move(given);
      connect(*gui->readySignal(), *this, &Sound::onPrint);
    }
  }

  void* queryInterface(StringView asked) noexcept override { return PTPlugin::queryInterface(asked); }
  SmartPtr<Dom::INode> getSchema() override { return tickets->loadSchema(u"chrome://sound/content/schema.xml"); }
  SmartPtr<Dom::INode> convertPMtoPT(Property& from, PTLevel level) override {
    const auto element = host().documents()->createElement(u"PrintTicket", u"psk", u"psk");
    tickets->propertiesToTicket(*this, element, from, level);
    return element;
  }
  void convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& to) override {
    tickets->ticketToProperties(*this, std::move(ticket), to);
  }

 protected:
  // What is overridden, to be broken.
  virtual const char16_t* layout() { return u"chrome://sound/content/tab.xul"; }
  virtual void ready() {}
  virtual void print() {}
  virtual void switchChanged(ModelSelectionChange& change) {
    if (const auto box = switchBox()) box->setChecked(change.value.view() == u"On");
  }
  virtual void sizeAllowed(ModelEnableChange&) {}
  virtual void clicked() {
    const auto box = switchBox();
    const auto transition = propertyManager()->transition(u"Switch", box->isChecked() ? u"On" : u"Off");
    propertyManager()->submit(transition);
  }
  virtual void more() {
    const auto dialog = gui->openDialog(u"chrome://sound/content/dlg.xul");
    if (!dialog) return;
    connect(*dialog->okSignal(), *this, &Sound::onOk);
    dialog->runModally();
  }
  virtual void accepted() {}
  virtual void helpAsked() {
    if (gui->tabPanel()->selectedTabId().view() == u"tab_sound") showHelp();
  }
  virtual void imported() {}

  SmartPtr<ModelRoot> properties() { return propertyManager()->modelProperties(); }
  SmartPtr<CheckBox> switchBox() { return smartCast<CheckBox>(gui->widgetById(u"chk_switch")); }
  std::u16string setting(const char16_t* key) {
    const auto property = propertyManager()->configuration()->child(key);
    return property ? property->wideValue().str() : std::u16string();
  }

  SmartPtr<GUI> gui;

 private:
  void onReady(SmartPtr<GUI>) {
    connect(*properties()->enableChangeSignal(u"Size"), *this, &Sound::onSizeAllowed);
    connect(*properties()->selectionChangeSignal(u"Switch"), *this, &Sound::onSwitch);
    if (const auto box = switchBox()) connect(*box->clickSignal(), *this, &Sound::onClick);
    if (const auto button = smartCast<Button>(gui->widgetById(u"btn_more")))
      connect(*button->clickSignal(), *this, &Sound::onMore);
    connect(*gui->tabPanel()->helpSignal(), *this, &Sound::onHelp);
    connect(*propertyManager()->profileImportSignal(), *this, &Sound::onImport);
    ready();
  }
  void onPrint(SmartPtr<GUI>) { print(); }
  void onSwitch(ModelSelectionChange& change) { switchChanged(change); }
  void onSwitchWithoutTab(ModelSelectionChange&) {}
  void onSizeAllowed(ModelEnableChange& change) { sizeAllowed(change); }
  void onClick(EventArg<Toggle>) { clicked(); }
  void onMore(EventArg<Button>) { more(); }
  void onOk(SubDialogEventArg&) { accepted(); }
  void onHelp(EventArg<TabPanel>) { helpAsked(); }
  void onImport(ImportExportEventArg) { imported(); }
};

// What createPlugin does.
template <class Plugin>
UIPlugin* make(Host& host, PropertyManager manager, const String& name, void* reserved,
               SmartPtr<Services::Library> library) {
  if (answerVersion(name, reserved)) return nullptr;
  if (name.view() != "effect") return nullptr;
  return new (host.allocator()) Plugin(host, name, manager, std::move(library));
}

}  // namespace Broken

#define EXPORT_PLUGIN(Plugin)                                                                                          \
  KILN_EXPORT Kiln::UIPlugin* createPlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name,  \
                                           void* reserved, Kiln::SmartPtr<Kiln::Services::Library> library) {          \
    return Broken::make<Plugin>(host, std::move(manager), name, reserved, std::move(library));                         \
  }
