#include "effect/effect_plugin.h"

namespace Kiln::XUL {

using namespace Effect;

EffectPlugin::EffectPlugin(Host& lender, const String& name, const PropertyManager& properties,
                           SmartPtr<Services::Library> ownLibrary)
    : UIPlugin(lender, name, properties, std::move(ownLibrary)),
      PTPlugin(lender),
      tabHost{lender, properties, {}},
      transforms(tabHost),
      watermark(tabHost),
      overlay(tabHost),
      overlayCreation(tabHost, overlay) {}

void EffectPlugin::create() {}

void EffectPlugin::initialise() {}

void EffectPlugin::configureUI(SmartPtr<GUI> newGui) {
  const std::string mode = tabHost.uiMode();
  if (!isActive() && mode != modePDC) return;
  if (mode == modeDocProp || mode == modePDC) {
    tabHost.preferences = std::move(newGui);
    tabHost.preferences->load(Address::tabLayout);
    connect(*tabHost.preferences->readySignal(), *this, &EffectPlugin::onGUIReady);
  } else if (mode == modePrePrint) {
    tabHost.preferences = std::move(newGui);
    connect(*tabHost.preferences->readySignal(), overlayCreation, &OverlayCreation::popupOvlPrintDlg);
  }
}

bool EffectPlugin::rootlessActivation() {
  if (!isActive()) return false;
  const auto model = propertyManager()->modelProperties();
  connect(*model->selectionChangeSignal(Prop::watermarkSel), watermark, &WatermarkTab::WMSelectionChange);
  return false;
}

void EffectPlugin::onGUIReady(SmartPtr<GUI>) {
  const auto container = tabHost.preferences->widgetById(WidgetId::leftBox);
  watermark.alignIn(container);
  overlay.alignIn(container);

  watermark.setupWM();
  overlay.setupOverlay();
  transforms.setupRotate180ForA3LD();
  connectEnableChanges();
  connectSelectionChanges();
  connectTabPanel();
  transforms.bindBoxes();

  connect(*propertyManager()->profileImportSignal(), *this, &EffectPlugin::onImportProfile);
  connect(*propertyManager()->profileExportSignal(), *this, &EffectPlugin::onExportProfile);

  if (tabHost.uiMode() != modePDC) return;
  for (const Name id :
       {WidgetId::securityPatternEdit, WidgetId::securityPatternDelete, WidgetId::securityPatternLayering})
    if (const auto found = tabHost.preferences->widgetById(id)) found->disable();
}

void EffectPlugin::connectEnableChanges() {
  const auto model = propertyManager()->modelProperties();
  const auto follow = [&model](Name property, auto& side, auto handler) {
    connect(*model->enableChangeSignal(property), side, handler);
  };
  follow(Prop::watermark, watermark, &WatermarkTab::DisableWM);
  follow(Prop::firstPageOnly, watermark, &WatermarkTab::DisableWMFirstPageOnly);
  follow(Prop::watermarkOccurance, watermark, &WatermarkTab::DisableWMOccurance);
  follow(Prop::overlayImage, overlay, &OverlayTab::DisableOvl);
  transforms.connectEnableChanges(*model);
  follow(Prop::overlayOccurance, overlay, &OverlayTab::DisableOvlOccurance);
}

void EffectPlugin::connectSelectionChanges() {
  const auto model = propertyManager()->modelProperties();
  const auto follow = [&model](Name property, auto& side, auto handler) {
    connect(*model->selectionChangeSignal(property), side, handler);
  };
  follow(Prop::watermarkSel, watermark, &WatermarkTab::WMSelectionChange);
  follow(Prop::overlaySel, overlay, &OverlayTab::OvlSelectionChange);
  transforms.connectSelectionChanges(*model);
  follow(Prop::firstPageOnly, watermark, &WatermarkTab::FirstPageSelectionChange);
  follow(Prop::watermarkOccurance, watermark, &WatermarkTab::WMOccuranceSelectionChange);
  follow(Prop::overlayOccurance, overlay, &OverlayTab::OvlOccuranceSelectionChange);
  follow(Prop::overlayLayering, overlay, &OverlayTab::OvlLayeringSelectionChange);
  follow(Prop::overlayImageCreate, overlayCreation, &OverlayCreation::onPrintJobOverlay);
}

void EffectPlugin::connectTabPanel() {
  const auto panel = tabHost.preferences->tabPanel();
  connect(*panel->helpSignal(), *this, &EffectPlugin::onHelp);
  connect(*panel->preAcceptSignal(), overlayCreation, &OverlayCreation::onPreAccept);
}

void EffectPlugin::onHelp(EventArg<TabPanel>) {
  if (tabHost.preferences->tabPanel()->selectedTabId().view() == tabId) showHelp();
}

}  // namespace Kiln::XUL
