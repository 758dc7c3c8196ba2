#include "effect/effect_plugin.h"

namespace Kiln::XUL {

using namespace Effect;

EffectPlugin::EffectPlugin(Host& lender, const String& name, const PropertyManager& properties,
                           SmartPtr<Services::Library> ownLibrary)
    : UIPlugin(lender, name, properties, std::move(ownLibrary)),
      PTPlugin(lender),
      tabHost{lender, properties, {}} {
  watermark.leftBox = lender.alignment(Alignment::shareColumns);
  overlay.leftBox = lender.alignment(Alignment::shareColumns);
}

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
    connect(*tabHost.preferences->readySignal(), *this, &EffectPlugin::popupOvlPrintDlg);
  }
}

bool EffectPlugin::rootlessActivation() {
  if (!isActive()) return false;
  const auto model = propertyManager()->modelProperties();
  connect(*model->selectionChangeSignal(Prop::watermarkSel), *this, &EffectPlugin::WMSelectionChange);
  return false;
}

void EffectPlugin::onGUIReady(SmartPtr<GUI>) {
  const auto container = tabHost.preferences->widgetById(WidgetId::leftBox);
  watermark.leftBox->bind(container);
  overlay.leftBox->bind(container);

  setupWM();
  setupOverlay();
  setupRotate180ForA3LD();
  connectEnableChanges();
  connectSelectionChanges();
  connectTabPanel();
  bindPageTransforms();

  connect(*propertyManager()->profileImportSignal(), *this, &EffectPlugin::onImportProfile);
  connect(*propertyManager()->profileExportSignal(), *this, &EffectPlugin::onExportProfile);

  if (tabHost.uiMode() != modePDC) return;
  for (const Name id :
       {WidgetId::securityPatternEdit, WidgetId::securityPatternDelete, WidgetId::securityPatternLayering})
    if (const auto found = tabHost.preferences->widgetById(id)) found->disable();
}

void EffectPlugin::connectEnableChanges() {
  using Handler = void (EffectPlugin::*)(ModelEnableChange&);
  const std::pair<Name, Handler> handlers[] = {
      {Prop::watermark, &EffectPlugin::DisableWM},
      {Prop::firstPageOnly, &EffectPlugin::DisableWMFirstPageOnly},
      {Prop::watermarkOccurance, &EffectPlugin::DisableWMOccurance},
      {Prop::overlayImage, &EffectPlugin::DisableOvl},
      {Prop::negativeImage, &EffectPlugin::DisableNegativeImage},
      {Prop::mirrorImage, &EffectPlugin::DisableMirrorImage},
      {Prop::rotate180, &EffectPlugin::DisableRotate180},
      {Prop::rotate180ForA3LD, &EffectPlugin::DisableRotate180},
      {Prop::overlayOccurance, &EffectPlugin::DisableOvlOccurance},
  };
  const auto model = propertyManager()->modelProperties();
  for (const auto& [property, handler] : handlers) connect(*model->enableChangeSignal(property), *this, handler);
}

void EffectPlugin::connectSelectionChanges() {
  using Handler = void (EffectPlugin::*)(ModelSelectionChange&);
  const std::pair<Name, Handler> handlers[] = {
      {Prop::watermarkSel, &EffectPlugin::WMSelectionChange},
      {Prop::overlaySel, &EffectPlugin::OvlSelectionChange},
      {Prop::negativeImage, &EffectPlugin::NegativeSelectionChange},
      {Prop::mirrorImage, &EffectPlugin::MirrorSelectionChange},
      {Prop::rotate180, &EffectPlugin::Rotate180SelectionChange},
      {Prop::rotate180ForA3LD, &EffectPlugin::Rotate180ForA3LDSelectionChange},
      {Prop::firstPageOnly, &EffectPlugin::FirstPageSelectionChange},
      {Prop::watermarkOccurance, &EffectPlugin::WMOccuranceSelectionChange},
      {Prop::overlayOccurance, &EffectPlugin::OvlOccuranceSelectionChange},
      {Prop::overlayLayering, &EffectPlugin::OvlLayeringSelectionChange},
      {Prop::overlayImageCreate, &EffectPlugin::onPrintJobOverlay},
  };
  const auto model = propertyManager()->modelProperties();
  for (const auto& [property, handler] : handlers) connect(*model->selectionChangeSignal(property), *this, handler);
}

void EffectPlugin::connectTabPanel() {
  const auto panel = tabHost.preferences->tabPanel();
  connect(*panel->helpSignal(), *this, &EffectPlugin::onHelp);
  connect(*panel->preAcceptSignal(), *this, &EffectPlugin::onPreAccept);
}

void EffectPlugin::onHelp(EventArg<TabPanel>) {
  if (tabHost.preferences->tabPanel()->selectedTabId().view() == tabId) showHelp();
}

}  // namespace Kiln::XUL
