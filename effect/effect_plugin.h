// The plug-in "effect": the tab of page effects, and their PrintTicket conversion.
//
// Its source files by feature: effect_plugin.cpp (frame and connections), overlay/tab.cpp, overlay/selection.cpp,
// overlay/creation.cpp, print_ticket.cpp, profile.cpp.
#pragma once

#include "effect/overlay/overlays.h"
#include "effect/page_transforms.h"
#include "effect/tab_host.h"
#include "effect/watermark/tab.h"
#include "kiln/plugin.h"

#include <string>

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

  // The frame.
  void onGUIReady(SmartPtr<GUI> readyGui);
  void onHelp(EventArg<TabPanel> event);

  // The overlay side.
  void setupOverlay();
  void OvlSelectionChange(ModelSelectionChange& change);
  void OvlOccuranceSelectionChange(ModelSelectionChange& change);
  void OvlLayeringSelectionChange(ModelSelectionChange& change);
  void DisableOvl(ModelEnableChange& change);
  void DisableOvlOccurance(ModelEnableChange& change);
  void DisableOvlLayering(ModelEnableChange& change);
  void onOvlChange(EventArg<ComboBox> event);
  void onOvlDetails(EventArg<Button> event);
  void onOvlDelete(EventArg<Button> event);
  void onOkOvlDelete(SubDialogEventArg& event);
  void onOvlOverlay(EventArg<Toggle> event);
  void onOvlPerPage(EventArg<Toggle> event);

  // Turns the overlay off when the selection is invalid.
  void makeOvlValid();

  // Replaces the missing files in OverlaySourceFileName by the store's, or removes them.
  void validateOvlSourceFile(std::u16string_view selection);

  // Updates the controls for the overlay that is selected in the list.
  void updateOvlControls();

  // Creating an overlay from a job.
  bool sendOverlayCreateTransitions();
  void onOvlOverwrite(SubDialogEventArg& event);
  void onCancelOvlOverwrite(SubDialogEventArg& event);
  void onPrintJobOverlay(ModelSelectionChange& change);
  void popupOvlPrintDlg(SmartPtr<GUI> readyGui);
  void onPreAccept(SmartPtr<PreAcceptPanel> panel);

  // Profiles.
  void onImportProfile(ImportExportEventArg event);
  void onExportProfile(ImportExportEventArg event);

  PageTransforms& pageTransforms() { return transforms; }

 private:
  void connectEnableChanges();
  void connectSelectionChanges();
  void connectTabPanel();

  SmartPtr<Overlays> newOverlays();

  // The store; opened on the first call.
  Overlays& overlays();
  void bindOverlayWidgets();
  void showOverlays();
  void showDownloadedTip();

  // Runs the dialog for several overlays; returns when it has closed.
  void assignOverlays();
  std::u16string selectedOverlay();
  void selectOverlayItem(std::u16string_view value, std::u16string_view source);
  void offerOverlay(std::u16string_view value);
  void withdrawOverlay();
  void showOverlayPicture();
  std::u16string presentOverlayFile(std::u16string_view file);
  bool mayTakeName(const std::u16string& name);
  void prepareDestination(const std::u16string& name);
  template <class Ending>
  void createOverlay(const Ending& ending);

  void exportOverlays(Services::Path& location);
  void takeUpOverlays();

  TabHost tabHost;
  PageTransforms transforms;
  WatermarkTab watermark;

  struct OverlaySide {
    SmartPtr<Alignment> leftBox;
    SmartPtr<Overlays> store;  // empty until first needed, or when an import ran out of memory

    // Each empty without a tab, or when the layout has no such widget.
    SmartPtr<ComboBox> list;
    SmartPtr<Button> detailsButton;
    SmartPtr<Button> deleteButton;
    SmartPtr<Toggle> layeringBox;
    SmartPtr<Toggle> perPageBox;
    SmartPtr<ImageBox> picture;
    SmartPtr<Label> caption;

    SmartPtr<Image> tip;  // the icon of downloaded data; empty when the tab does not mark it
    bool mayOverwrite = false;
  } overlay;
};

}  // namespace Kiln::XUL
