// The binary interface depends on the order of virtual functions, so it must not change.
#include "kiln/host.h"
#include "kiln/plugin.h"
#include "kiln/profile.h"
#include "slots.h"

#include <gtest/gtest.h>

namespace {

using namespace Kiln;
using namespace Kiln::XUL;

// The life cycle, then the inherited functions.
TEST(SlotOrder, OfUIPlugin) {
  expectSlots(afterDestructors,
              {slotOf(&UIPlugin::create), slotOf(&UIPlugin::initialise), slotOf(&UIPlugin::configureUI),
               slotOf(&UIPlugin::rootlessActivation), slotOf(&UIPlugin::propertyManager), slotOf(&UIPlugin::isActive),
               slotOf(&UIPlugin::showHelp)});
}

TEST(SlotOrder, OfRefCount) { expectSlots(afterDestructors, {slotOf(&RefCount::queryInterface)}); }

TEST(SlotOrder, OfPTPlugin) {
  expectSlots(afterDestructors, {slotOf(&PTPlugin::getSchema), slotOf(&PTPlugin::convertPMtoPT),
                                 slotOf(&PTPlugin::convertPTtoPM), slotOf(&PTPlugin::queryInterface)});
}

TEST(SlotOrder, OfSignal) {
  expectSlots(afterRefCount, {slotOf(&Signal<WString>::attach), slotOf(&Signal<WString>::allocator)});
}

TEST(SlotOrder, OfArgumentSlot) { expectSlots(afterRefCount, {slotOf(&ArgumentSlot<WString>::call)}); }

TEST(SlotOrder, OfAllocator) { expectSlots(0, {slotOf(&Allocator::allocate), slotOf(&Allocator::deallocate)}); }

TEST(SlotOrder, OfINode) {
  expectSlots(afterRefCount, {slotOf(&Dom::INode::name), slotOf(&Dom::INode::value), slotOf(&Dom::INode::setValue),
                              slotOf(&Dom::INode::childCount), slotOf(&Dom::INode::childAt), slotOf(&Dom::INode::child),
                              slotOf(&Dom::INode::childOrNew), slotOf(&Dom::INode::setChild),
                              slotOf(&Dom::INode::removeChild), slotOf(&Dom::INode::clone)});
}

TEST(SlotOrder, OfTextList) {
  expectSlots(afterRefCount, {slotOf(&Services::TextList::count), slotOf(&Services::TextList::at)});
}

TEST(SlotOrder, OfPath) {
  expectSlots(afterRefCount,
              {slotOf(&Services::Path::text), slotOf(&Services::Path::join), slotOf(&Services::Path::folder),
               slotOf(&Services::Path::lastPart), slotOf(&Services::Path::exists), slotOf(&Services::Path::isFolder),
               slotOf(&Services::Path::list), slotOf(&Services::Path::createFolder), slotOf(&Services::Path::remove),
               slotOf(&Services::Path::copyTo)});
}

TEST(SlotOrder, OfBackingStoreIO) {
  expectSlots(afterRefCount, {slotOf(&Services::BackingStoreIO::readAll), slotOf(&Services::BackingStoreIO::write),
                              slotOf(&Services::BackingStoreIO::commit)});
}

TEST(SlotOrder, OfFileBackingStoreIO) {
  expectSlots(slotOf(&Services::BackingStoreIO::commit) + 1, {slotOf(&Services::FileBackingStoreIO::path)});
}

TEST(SlotOrder, OfDocuments) {
  expectSlots(afterRefCount, {slotOf(&Services::Documents::createElement), slotOf(&Services::Documents::read),
                              slotOf(&Services::Documents::write)});
}

TEST(SlotOrder, OfProperty) {
  expectSlots(afterRefCount, {slotOf(&Property::narrowValue), slotOf(&Property::wideValue),
                              slotOf(&Property::boolValue), slotOf(&Property::equals), slotOf(&Property::setValue),
                              slotOf(&Property::hasChild), slotOf(&Property::child)});
}

TEST(SlotOrder, OfModelRoot) {
  expectSlots(slotOf(&Property::child) + 1,
              {slotOf(&ModelRoot::enableChangeSignal), slotOf(&ModelRoot::selectionChangeSignal)});
}

TEST(SlotOrder, OfTransition) { expectSlots(afterRefCount, {slotOf(&State::Transition::add)}); }

TEST(SlotOrder, OfIPropertyManager) {
  expectSlots(afterRefCount,
              {slotOf(&IPropertyManager::modelProperties), slotOf(&IPropertyManager::configuration),
               slotOf(&IPropertyManager::xmlCustomisation), slotOf(&IPropertyManager::transition),
               slotOf(&IPropertyManager::submit), slotOf(&IPropertyManager::valueAllowed),
               slotOf(&IPropertyManager::profileImportSignal), slotOf(&IPropertyManager::profileExportSignal)});
}

TEST(SlotOrder, OfImportExportEvent) {
  expectSlots(afterRefCount, {slotOf(&ImportExportEvent::property), slotOf(&ImportExportEvent::location)});
}

TEST(SlotOrder, OfWidget) {
  expectSlots(afterRefCount,
              {slotOf(&XUL::Widget::hide), slotOf(&XUL::Widget::enable), slotOf(&XUL::Widget::disable),
               slotOf(&XUL::Widget::setVisible), slotOf(&XUL::Widget::setEnabled), slotOf(&XUL::Widget::isEnabled),
               slotOf(&XUL::Widget::id), slotOf(&XUL::Widget::nativeWindow)});
}

TEST(SlotOrder, OfLabel) {
  expectSlots(slotOf(&XUL::Widget::nativeWindow) + 1, {slotOf(&XUL::Label::setLabel), slotOf(&XUL::Label::setImage)});
}

TEST(SlotOrder, OfImageBox) {
  expectSlots(slotOf(&XUL::Widget::nativeWindow) + 1,
              {slotOf(&XUL::ImageBox::setImage), slotOf(&XUL::ImageBox::setResource),
               slotOf(&XUL::ImageBox::dropSignal), slotOf(&XUL::ImageBox::menuSignal)});
}

TEST(SlotOrder, OfButton) {
  expectSlots(slotOf(&XUL::Widget::nativeWindow) + 1,
              {slotOf(&XUL::Button::setLabel), slotOf(&XUL::Button::clickSignal)});
}

TEST(SlotOrder, OfToggle) {
  expectSlots(slotOf(&XUL::Widget::nativeWindow) + 1,
              {slotOf(&XUL::Toggle::setChecked), slotOf(&XUL::Toggle::isChecked), slotOf(&XUL::Toggle::setLabel),
               slotOf(&XUL::Toggle::clickSignal), slotOf(&XUL::Toggle::changeSignal)});
}

TEST(SlotOrder, OfListItem) {
  expectSlots(afterRefCount,
              {slotOf(&XUL::ListItem::text), slotOf(&XUL::ListItem::setText), slotOf(&XUL::ListItem::displayedText),
               slotOf(&XUL::ListItem::value), slotOf(&XUL::ListItem::setValue), slotOf(&XUL::ListItem::setColour),
               slotOf(&XUL::ListItem::image), slotOf(&XUL::ListItem::setImage), slotOf(&XUL::ListItem::isMarked),
               slotOf(&XUL::ListItem::setMarked), slotOf(&XUL::ListItem::flag), slotOf(&XUL::ListItem::setFlag)});
}

TEST(SlotOrder, OfListData) {
  expectSlots(afterRefCount, {slotOf(&XUL::ListData::count), slotOf(&XUL::ListData::at), slotOf(&XUL::ListData::append),
                              slotOf(&XUL::ListData::insert), slotOf(&XUL::ListData::remove)});
}

TEST(SlotOrder, OfSelector) {
  expectSlots(slotOf(&XUL::Widget::nativeWindow) + 1,
              {slotOf(&XUL::Selector::data), slotOf(&XUL::Selector::setData), slotOf(&XUL::Selector::selectedIndex),
               slotOf(&XUL::Selector::select), slotOf(&XUL::Selector::selectValue),
               slotOf(&XUL::Selector::selectedItem)});
}

TEST(SlotOrder, OfListBox) {
  expectSlots(slotOf(&XUL::Selector::selectedItem) + 1, {slotOf(&XUL::ListBox::changeSignal)});
}

TEST(SlotOrder, OfComboBox) {
  expectSlots(slotOf(&XUL::Selector::selectedItem) + 1,
              {slotOf(&XUL::ComboBox::changeSignal), slotOf(&XUL::ComboBox::setSorted)});
}

TEST(SlotOrder, OfTextChangeEvent) {
  expectSlots(afterRefCount, {slotOf(&XUL::TextChangeEvent::text), slotOf(&XUL::TextChangeEvent::isProvisional),
                              slotOf(&XUL::TextChangeEvent::refuse), slotOf(&XUL::TextChangeEvent::source)});
}

TEST(SlotOrder, OfTextBox) {
  expectSlots(slotOf(&XUL::Widget::nativeWindow) + 1,
              {slotOf(&XUL::TextBox::text), slotOf(&XUL::TextBox::setText), slotOf(&XUL::TextBox::setMaximumLength),
               slotOf(&XUL::TextBox::typingSignal), slotOf(&XUL::TextBox::pastingSignal),
               slotOf(&XUL::TextBox::blurSignal)});
}

TEST(SlotOrder, OfScrollBar) {
  expectSlots(
      slotOf(&XUL::Widget::nativeWindow) + 1,
      {slotOf(&XUL::ScrollBar::position), slotOf(&XUL::ScrollBar::setPosition), slotOf(&XUL::ScrollBar::scrollSignal)});
}

TEST(SlotOrder, OfColorPicker) {
  expectSlots(slotOf(&XUL::Widget::nativeWindow) + 1,
              {slotOf(&XUL::ColorPicker::colour), slotOf(&XUL::ColorPicker::changeSignal)});
}

TEST(SlotOrder, OfWMPreview) {
  expectSlots(
      slotOf(&XUL::Widget::nativeWindow) + 1,
      {slotOf(&XUL::WMPreview::setText), slotOf(&XUL::WMPreview::setColour), slotOf(&XUL::WMPreview::setPosition),
       slotOf(&XUL::WMPreview::setRotation), slotOf(&XUL::WMPreview::setFontFace), slotOf(&XUL::WMPreview::setBold),
       slotOf(&XUL::WMPreview::setItalic), slotOf(&XUL::WMPreview::setFontSize), slotOf(&XUL::WMPreview::setOpacity)});
}

TEST(SlotOrder, OfAlignment) { expectSlots(afterRefCount, {slotOf(&XUL::Alignment::bind)}); }

TEST(SlotOrder, OfPreAcceptPanel) { expectSlots(afterRefCount, {slotOf(&XUL::PreAcceptPanel::veto)}); }

TEST(SlotOrder, OfTabPanel) {
  expectSlots(afterRefCount, {slotOf(&XUL::TabPanel::selectedTabId), slotOf(&XUL::TabPanel::helpSignal),
                              slotOf(&XUL::TabPanel::preAcceptSignal)});
}

TEST(SlotOrder, OfGUI) {
  expectSlots(afterRefCount, {slotOf(&XUL::GUI::load), slotOf(&XUL::GUI::readySignal), slotOf(&XUL::GUI::widgetById),
                              slotOf(&XUL::GUI::tabPanel), slotOf(&XUL::GUI::openDialog)});
}

TEST(SlotOrder, OfSubDialogEventArg) { expectSlots(afterRefCount, {slotOf(&XUL::SubDialogEventArg::vetoClose)}); }

TEST(SlotOrder, OfSubDialog) {
  expectSlots(afterRefCount, {slotOf(&XUL::SubDialog::widgetById), slotOf(&XUL::SubDialog::parentWidgetById),
                              slotOf(&XUL::SubDialog::okButton), slotOf(&XUL::SubDialog::okSignal),
                              slotOf(&XUL::SubDialog::cancelSignal), slotOf(&XUL::SubDialog::openDialog),
                              slotOf(&XUL::SubDialog::runModally), slotOf(&XUL::SubDialog::show),
                              slotOf(&XUL::SubDialog::registerImage)});
}

TEST(SlotOrder, OfTickets) {
  expectSlots(afterRefCount, {slotOf(&Services::Tickets::loadSchema), slotOf(&Services::Tickets::propertiesToTicket),
                              slotOf(&Services::Tickets::ticketToProperties)});
}

TEST(SlotOrder, OfHost) {
  expectSlots(0, {slotOf(&Host::allocator),     slotOf(&Host::isPluginActive), slotOf(&Host::showPluginHelp),
                  slotOf(&Host::showHelpTopic), slotOf(&Host::attributeNames), slotOf(&Host::runJobStep),
                  slotOf(&Host::cancelJob),     slotOf(&Host::listData),       slotOf(&Host::alignment),
                  slotOf(&Host::image),         slotOf(&Host::swatch),         slotOf(&Host::translate),
                  slotOf(&Host::lookUp),        slotOf(&Host::locales),        slotOf(&Host::languageName),
                  slotOf(&Host::isJapanese),    slotOf(&Host::fontNames),      slotOf(&Host::path),
                  slotOf(&Host::file),          slotOf(&Host::resource),       slotOf(&Host::documents),
                  slotOf(&Host::tickets),       slotOf(&Host::tell),           slotOf(&Host::scaledImage),
                  slotOf(&Host::queryInterface)});
}

}  // namespace
