// Creating an overlay: captures the current print job into the store, under a name that the user enters.
#pragma once

#include "effect/overlay/tab.h"

#include <string>

namespace Kiln::XUL {

class OverlayCreation final : public SignalTarget {
 public:
  // Both outlive the object. `overlaySide` has the store.
  OverlayCreation(const TabHost& lender, OverlayTab& overlaySide) : host(lender), side(overlaySide) {}

  bool sendOverlayCreateTransitions();
  void onOvlOverwrite(SubDialogEventArg& event);
  void onCancelOvlOverwrite(SubDialogEventArg& event);
  void onPrintJobOverlay(ModelSelectionChange& change);
  void popupOvlPrintDlg(SmartPtr<GUI> readyGui);
  void onPreAccept(SmartPtr<PreAcceptPanel> panel);

 private:
  template <class Ending>
  void createOverlay(const Ending& ending);
  bool mayTakeName(const std::u16string& name);
  void prepareDestination(const std::u16string& name);

  const TabHost& host;
  OverlayTab& side;
  bool mayOverwrite = false;
};

}  // namespace Kiln::XUL
