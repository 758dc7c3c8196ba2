#include "effect/overlay/creation.h"

#include <utility>

namespace Kiln::XUL {

using namespace Effect;

// Creates an overlay, then calls `ending` with whether a destination was prepared. On failure, clears the job's overlay
// name, since a job with a name counts as prepared, and rethrows to the host.
template <class Ending>
void OverlayCreation::createOverlay(const Ending& ending) {
  bool isPrepared = false;
  try {
    isPrepared = sendOverlayCreateTransitions();
  } catch (...) {
    ending(false);
    host.send({{Prop::overlayImageName, {}}});
    throw;
  }
  ending(isPrepared);
}

void OverlayCreation::onPrintJobOverlay(ModelSelectionChange& change) {
  if (change.value.view() != Value::on || !host.propertyIs(Prop::printJob, Value::overlayJob)) return;
  createOverlay([this](bool) { host.send({{Prop::overlayImageCreate, Value::off}}); });
}

void OverlayCreation::popupOvlPrintDlg(SmartPtr<GUI>) {
  if (!host.propertyIs(Prop::printJob, Value::overlayJob) || !host.propertyValue(Prop::overlayImageName).empty())
    return;
  createOverlay([this](bool isPrepared) {
    if (!isPrepared) host.services.cancelJob();
  });
}

// An ordinary job must not write into the destination of an earlier creation.
void OverlayCreation::onPreAccept(SmartPtr<PreAcceptPanel> panel) {
  if (!host.propertyIs(Prop::printJob, Value::overlayJob)) return host.send({{Prop::overlayDestFileName, {}}});
  if (!host.propertyValue(Prop::overlayImageName).empty()) return;
  createOverlay([&panel](bool isPrepared) {
    if (!isPrepared) panel->veto();
  });
}

// True when a destination was prepared, which the driver writes the overlay to.
bool OverlayCreation::sendOverlayCreateTransitions() {
  host.send({{Prop::ovlDestCreated, Value::no}});
  side.overlays().checkIndex();  // before the user is asked for a name in vain
  side.overlays().refresh();
  if (side.overlays().isFull()) {
    if (const auto dialog = host.preferences->openDialog(Address::overlayFull)) dialog->runModally();
    return false;
  }
  host.services.runJobStep();
  const std::u16string name = storableName(host.propertyValue(Prop::overlayImageName).view());
  if (name.empty() || !mayTakeName(name)) return false;
  prepareDestination(name);
  return true;
}

// Asks the user to confirm when one of their overlays already has the name.
bool OverlayCreation::mayTakeName(const std::u16string& name) {
  const std::int32_t known = side.overlays().findByLabel(name, false);
  if (known < 0 || !host.services.path(side.overlays().record(known).path)->exists()) return true;
  const bool outer = std::exchange(mayOverwrite, false);  // of a question that this creation runs inside
  const auto dialog = host.preferences->openDialog(Address::overwrite);
  if (!dialog) {
    mayOverwrite = outer;
    host.send({{Prop::overlayImageName, {}}});
    return false;
  }
  connect(*dialog->okSignal(), *this, &OverlayCreation::onOvlOverwrite);
  connect(*dialog->cancelSignal(), *this, &OverlayCreation::onCancelOvlOverwrite);
  dialog->runModally();
  return std::exchange(mayOverwrite, outer);
}

// Adds the new overlay to the index before the driver writes its file; stores do not list it until then. On failure
// there is no destination.
void OverlayCreation::prepareDestination(const std::u16string& name) {
  const auto destination = host.services.path(side.overlays().addOverlay(name));
  host.send({{Prop::ovlDestCreated, Value::yes}, {Prop::overlayDestFileName, destination->text().view()}});
  try {
    if (const auto folder = destination->folder(); !folder->exists()) folder->createFolder();
    if (destination->exists()) destination->remove();
    side.overlays().save();
  } catch (const Exception&) {
    side.overlays().takeBack(destination->text().view());
    host.send({{Prop::ovlDestCreated, Value::no}, {Prop::overlayDestFileName, {}}});
    throw;
  }
}

void OverlayCreation::onOvlOverwrite(SubDialogEventArg&) { mayOverwrite = true; }

void OverlayCreation::onCancelOvlOverwrite(SubDialogEventArg&) {
  mayOverwrite = false;
  host.send({{Prop::ovlDestCreated, Value::no}, {Prop::overlayImageName, {}}});
}

}  // namespace Kiln::XUL
