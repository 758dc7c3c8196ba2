#include "stamp_plugin.h"

#include "stamp_dialog.h"

namespace Stamp {

using namespace Kiln;
using namespace Kiln::XUL;

namespace {

// The names of the model's properties, and of the value for pages with a stamp.
constexpr const char16_t* stamp = u"Stamp";
constexpr const char16_t* stampText = u"StampText";
constexpr const char16_t* stamped = u"Stamp";
constexpr const char16_t* unstamped = u"None";

constexpr const char16_t* tabId = u"tab_stamp";

}  // namespace

StampPlugin::StampPlugin(Host& lender, const String& ownName, const PropertyManager& properties,
                         SmartPtr<Services::Library> ownLibrary)
    : UIPlugin(lender, ownName, properties, std::move(ownLibrary)),
      PTPlugin(lender),
      file(lender) {}

// The print-time step (UIMode "PrePrint") has nothing to ask.
void StampPlugin::configureUI(SmartPtr<GUI> shown) {
  const auto mode = settings().child(u"UIMode");
  if (!isActive() || (mode && mode->equals(u"PrePrint"))) return;
  gui = std::move(shown);
  gui->load(u"chrome://stamp/content/tab_stamp.xul");
  connect(*gui->readySignal(), *this, &StampPlugin::onReady);
}

// Sets no state: the host announces each property when this has returned.
void StampPlugin::onReady(SmartPtr<GUI>) {
  stampBox = smartCast<CheckBox>(gui->widgetById(u"chk_stamp"));
  textList = smartCast<ComboBox>(gui->widgetById(u"cmb_stamp"));
  otherTextButton = smartCast<Button>(gui->widgetById(u"btn_stamp"));
  if (stampBox) connect(*stampBox->clickSignal(), *this, &StampPlugin::onClick);
  if (textList) connect(*textList->changeSignal(), *this, &StampPlugin::onChoice);
  if (otherTextButton) connect(*otherTextButton->clickSignal(), *this, &StampPlugin::onOtherText);
  connect(*gui->tabPanel()->helpSignal(), *this, &StampPlugin::onHelp);

  const auto model = propertyManager()->modelProperties();
  connect(*model->selectionChangeSignal(stamp), *this, &StampPlugin::onStampChange);
  connect(*model->enableChangeSignal(stamp), *this, &StampPlugin::onStampEnableChange);
  connect(*model->selectionChangeSignal(stampText), *this, &StampPlugin::onTextChange);
}

void StampPlugin::onStampChange(ModelSelectionChange& change) {
  if (stampBox) stampBox->setChecked(change.value.view() == stamped);
}

void StampPlugin::onStampEnableChange(ModelEnableChange& change) {
  if (change.option.view() != stamped) return;
  if (stampBox) stampBox->setEnabled(change.enabled);
  if (textList) textList->setEnabled(change.enabled);
  if (otherTextButton) otherTextButton->setEnabled(change.enabled);
}

void StampPlugin::onTextChange(ModelSelectionChange&) { listTexts(); }

void StampPlugin::onClick(EventArg<Toggle> event) {
  const auto properties = propertyManager();
  properties->submit(properties->transition(stamp, event.source().isChecked() ? stamped : unstamped));
}

void StampPlugin::onChoice(EventArg<ComboBox> event) {
  if (const auto item = event.source().selectedItem()) submitText(item->value().view());
}

void StampPlugin::onOtherText(EventArg<Button>) {
  const auto current = propertyManager()->modelProperties()->child(stampText)->wideValue();
  const auto text = StampDialog(host().allocator()).ask(*gui, current.str());
  if (!text) return;
  file.add(settings(), *text);
  submitText(*text);
}

void StampPlugin::onHelp(EventArg<TabPanel> event) {
  if (event.source().selectedTabId().view() == tabId) showHelp();
}

// Lists what the user has stamped with, and the current text, which is not in the file when a profile or a ticket has
// set it.
void StampPlugin::listTexts() {
  if (!textList) return;
  const auto current = propertyManager()->modelProperties()->child(stampText)->wideValue();
  const auto items = host().listData();
  bool isKept = false;
  for (const std::u16string& text : file.texts(settings())) {
    items->append(text, text);
    isKept = isKept || text == current.view();
  }
  if (!isKept && !current.empty()) items->append(current, current);
  textList->setData(items);
  textList->selectValue(current);
}

// One transition: the host shows the two changes at once.
void StampPlugin::submitText(std::u16string_view text) {
  const auto properties = propertyManager();
  const auto transition = properties->transition(stampText, text);
  transition->add(stamp, stamped);
  properties->submit(transition);
}

Property& StampPlugin::settings() {
  if (!configuration) configuration = propertyManager()->configuration();
  return *configuration;
}

SmartPtr<Dom::INode> StampPlugin::getSchema() {
  return tickets->loadSchema(u"chrome://stamp/content/schema_stamp.xml");
}

SmartPtr<Dom::INode> StampPlugin::convertPMtoPT(Property& properties, PTLevel level) {
  const auto ticket = host().documents()->createElement(u"PrintTicket", u"psk", u"psk");
  tickets->propertiesToTicket(*this, ticket, properties, level);
  return ticket;
}

void StampPlugin::convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& properties) {
  tickets->ticketToProperties(*this, std::move(ticket), properties);
}

}  // namespace Stamp

KILN_EXPORT Kiln::UIPlugin* createPlugin(Kiln::Host& host, Kiln::PropertyManager manager, const Kiln::String& name,
                                         void* reserved, Kiln::SmartPtr<Kiln::Services::Library> library) {
  if (Kiln::answerVersion(name, reserved)) return nullptr;
  // Released before this returns, whichever side destroys the parameters.
  const Kiln::PropertyManager ownManager = std::move(manager);
  const Kiln::SmartPtr<Kiln::Services::Library> ownLibrary = std::move(library);
  if (name.view() != Stamp::pluginName) return nullptr;
  return new (host.allocator()) Stamp::StampPlugin(host, name, ownManager, ownLibrary);
}
