// The plug-in "effect": the tab of page effects, and their PrintTicket conversion.
//
// EffectPlugin is the frame: it loads the tab and connects the host's signals to the sides of the tab, whose handlers
// and state are their own. Its source files: effect_plugin.cpp (life cycle and connections), print_ticket.cpp,
// profile.cpp.
#pragma once

#include "effect/overlay/creation.h"
#include "effect/overlay/tab.h"
#include "effect/page_transforms.h"
#include "effect/tab_host.h"
#include "effect/watermark/tab.h"
#include "kiln/plugin.h"

namespace Kiln::XUL {

class EffectPlugin final : public UIPlugin, public PTPlugin {
 public:
  EffectPlugin(Host& lender, const String& name, const PropertyManager& properties,
               SmartPtr<Services::Library> ownLibrary);

  // UIPlugin
  void create() override;
  void initialise() override;
  void configureUI(SmartPtr<GUI> newGui) override;
  bool rootlessActivation() override;

  // PTPlugin
  SmartPtr<Dom::INode> getSchema() override;
  SmartPtr<Dom::INode> convertPMtoPT(Property& properties, PTLevel level) override;
  void convertPTtoPM(SmartPtr<Dom::INode> ticket, Property& properties) override;

  // Handlers of what concerns the tab as a whole.
  void onGUIReady(SmartPtr<GUI> readyGui);
  void onHelp(EventArg<TabPanel> event);
  void onImportProfile(ImportExportEventArg event);
  void onExportProfile(ImportExportEventArg event);

  PageTransforms& pageTransforms() { return transforms; }
  OverlayTab& overlayTab() { return overlay; }

 private:
  void connectEnableChanges();
  void connectSelectionChanges();
  void connectTabPanel();

  TabHost tabHost;

  // The sides of the tab; they refer to tabHost.
  PageTransforms transforms;
  WatermarkTab watermark;
  OverlayTab overlay;
  OverlayCreation overlayCreation;
};

}  // namespace Kiln::XUL
