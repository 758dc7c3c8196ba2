// Creating an overlay: captures the current print job into the store, under a name that the user enters.
#include "effect/effect_plugin.h"

namespace Kiln::XUL {

using namespace Effect;

// Creates an overlay, then calls `ending` with whether a destination was prepared. On failure, clears the job's overlay
// name, since a job with a name counts as prepared, and rethrows to the host.
template <class Ending>
void EffectPlugin::createOverlay(const Ending& ending) {
  bool isPrepared = false;
  try {
    isPrepared = sendOverlayCreateTransitions();
  } catch (...) {
    ending(false);
    tabHost.send({{Prop::overlayImageName, {}}});
    throw;
  }
  ending(isPrepared);
}

void EffectPlugin::onPrintJobOverlay(ModelSelectionChange& change) {
  if (change.value.view() != Value::on || !tabHost.propertyIs(Prop::printJob, Value::overlayJob)) return;
  createOverlay([this](bool) { tabHost.send({{Prop::overlayImageCreate, Value::off}}); });
}

void EffectPlugin::popupOvlPrintDlg(SmartPtr<GUI>) {
  if (!tabHost.propertyIs(Prop::printJob, Value::overlayJob) || !tabHost.propertyValue(Prop::overlayImageName).empty())
    return;
  createOverlay([this](bool isPrepared) {
    if (!isPrepared) host().cancelJob();
  });
}

// An ordinary job must not write into the destination of an earlier creation.
void EffectPlugin::onPreAccept(SmartPtr<PreAcceptPanel> panel) {
  if (!tabHost.propertyIs(Prop::printJob, Value::overlayJob)) return tabHost.send({{Prop::overlayDestFileName, {}}});
  if (!tabHost.propertyValue(Prop::overlayImageName).empty()) return;
  createOverlay([&panel](bool isPrepared) {
    if (!isPrepared) panel->veto();
  });
}

// True when a destination was prepared, which the driver writes the overlay to.
bool EffectPlugin::sendOverlayCreateTransitions() {
  tabHost.send({{Prop::ovlDestCreated, Value::no}});
  overlays().refresh();
  if (overlay.store->isFull()) {
    if (const auto dialog = tabHost.preferences->openDialog(Address::overlayFull)) dialog->runModally();
    return false;
  }
  host().runJobStep();
  const std::u16string name = storableName(tabHost.propertyValue(Prop::overlayImageName).view());
  if (name.empty() || !mayTakeName(name)) return false;
  prepareDestination(name);
  return true;
}

// Asks the user to confirm when one of their overlays already has the name.
bool EffectPlugin::mayTakeName(const std::u16string& name) {
  const std::int32_t known = overlay.store->findByLabel(name, false);
  if (known < 0 || !host().path(overlay.store->record(known).path)->exists()) return true;
  overlay.mayOverwrite = false;
  const auto dialog = tabHost.preferences->openDialog(Address::overwrite);
  if (!dialog) {
    tabHost.send({{Prop::overlayImageName, {}}});
    return false;
  }
  connect(*dialog->okSignal(), *this, &EffectPlugin::onOvlOverwrite);
  connect(*dialog->cancelSignal(), *this, &EffectPlugin::onCancelOvlOverwrite);
  dialog->runModally();
  return overlay.mayOverwrite;
}

// Adds the new overlay to the index before the driver writes its file; stores do not list it until then. On failure
// there is no destination.
void EffectPlugin::prepareDestination(const std::u16string& name) {
  const auto destination = host().path(overlay.store->addOverlay(name));
  tabHost.send({{Prop::ovlDestCreated, Value::yes}, {Prop::overlayDestFileName, destination->text().view()}});
  try {
    if (const auto folder = destination->folder(); !folder->exists()) folder->createFolder();
    if (destination->exists()) destination->remove();
    overlay.store->save();
  } catch (const Exception&) {
    overlay.store->takeBack(destination->text().view());
    tabHost.send({{Prop::ovlDestCreated, Value::no}, {Prop::overlayDestFileName, {}}});
    throw;
  }
}

void EffectPlugin::onOvlOverwrite(SubDialogEventArg&) { overlay.mayOverwrite = true; }

void EffectPlugin::onCancelOvlOverwrite(SubDialogEventArg&) {
  tabHost.send({{Prop::ovlDestCreated, Value::no}, {Prop::overlayImageName, {}}});
}

}  // namespace Kiln::XUL
