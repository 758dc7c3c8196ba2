#include "host/gui.h"

#include "formats/text.h"

#include <algorithm>
#include <stdexcept>

namespace Refhost {
namespace {

// The widget's interface for plug-ins; null for null.
Kiln::SmartPtr<Kiln::XUL::Widget> asWidget(WidgetNode* node) {
  return node == nullptr ? Kiln::SmartPtr<Kiln::XUL::Widget>() : Kiln::SmartPtr<Kiln::XUL::Widget>(&node->asWidget());
}

class PreAccept final : public Kiln::XUL::PreAcceptPanel {
 public:
  explicit PreAccept(const Trace& eventTrace) : trace(eventTrace) {}
  void veto() override {
    vetoed = true;
    trace.record({"veto", {{"of", u"pre-accept"}}});
  }
  bool vetoed = false;

 private:
  const Trace& trace;
};

class DialogEvent final : public Kiln::XUL::SubDialogEventArg {
 public:
  DialogEvent(const Trace& eventTrace, const std::u16string& dialogUrl) : trace(eventTrace), url(dialogUrl) {}
  void vetoClose() override {
    vetoed = true;
    trace.record({"veto", {{"of", url}}});
  }
  bool vetoed = false;

 private:
  const Trace& trace;
  std::u16string url;
};

}  // namespace

TabPanel::TabPanel(const Trace& eventTrace)
    : trace(eventTrace),
      help(make<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::TabPanel>>>(eventTrace, "help", u"TabPanel")),
      preAccept(make<HostSignal<Kiln::SmartPtr<Kiln::XUL::PreAcceptPanel>>>(eventTrace, "pre-accept", u"TabPanel")) {}

void TabPanel::fireHelp() { help->fire(Kiln::XUL::EventArg<Kiln::XUL::TabPanel>(this)); }

bool TabPanel::firePreAccept() {
  const auto panel = make<PreAccept>(trace);
  preAccept->fire(panel);
  return !panel->vetoed;
}

Dialog::Dialog(Gui& owner, std::u16string url, Layout layout)
    : gui(owner),
      address(std::move(url)),
      content(std::move(layout)),
      okFired(make<HostSignal<Kiln::XUL::SubDialogEventArg&>>(owner.trace, "ok", address)),
      cancelFired(make<HostSignal<Kiln::XUL::SubDialogEventArg&>>(owner.trace, "cancel", address)) {}

bool Dialog::accept() {
  if (!open || !ok().isOperable()) return false;
  const Kiln::SmartPtr<Dialog> self(this);
  const auto actions = gui.world.actions;
  bool isAccepted = false;
  actions->act({"ok"}, [&] {
    isAccepted = fireOk();
    if (!isAccepted) actions->vetoed();
  });
  return isAccepted;
}

bool Dialog::fireOk() {
  const auto event = make<DialogEvent>(gui.trace, address);
  bool handled = false;
  gui.world.widgets.dispatch([&] {
    okFired->fire(*event);
    handled = true;
  });
  if (!handled || event->vetoed) return false;
  close();
  return true;
}

void Dialog::cancel() {
  if (!open) return;
  const Kiln::SmartPtr<Dialog> self(this);
  gui.world.actions->act({"cancel"}, [this] { dismiss(); });
}

void Dialog::dismiss() {
  if (!open) return;
  const Kiln::SmartPtr<Dialog> self(this);
  const auto event = make<DialogEvent>(gui.trace, address);
  bool handled = false;
  gui.world.widgets.dispatch([&] {
    cancelFired->fire(*event);
    handled = true;
  });
  if (handled) close();
}

std::u16string Dialog::imageAddress(const std::u16string& name) const {
  const auto found = images.find(name);
  return found == images.end() ? std::u16string() : found->second;
}

Kiln::SmartPtr<Kiln::XUL::Widget> Dialog::widgetById(Kiln::WStringView id) { return asWidget(content.find(id)); }

Kiln::SmartPtr<Kiln::XUL::Widget> Dialog::parentWidgetById(Kiln::WStringView id) { return gui.widgetById(id); }

Kiln::SmartPtr<Kiln::XUL::Button> Dialog::okButton() { return content.acceptButton; }

Kiln::SmartPtr<Kiln::XUL::SubDialog> Dialog::openDialog(Kiln::WStringView url) { return gui.openDialog(url); }

void Dialog::runModally() {
  const Kiln::SmartPtr<Dialog> self(this);
  start(true);
  if (gui.world.beforeModal) gui.world.beforeModal();
  gui.world.actions->inDialog(*this, [this] { gui.world.face.runModally(*this); });
  if (open) close();
}

void Dialog::show() {
  start(false);
  gui.world.face.dialogOpened(*this);
}

void Dialog::registerImage(Kiln::WStringView name, Kiln::WStringView url) {
  images[std::u16string(name.view())] = url.view();
}

void Dialog::start(bool modally) {
  if (open) throw failure("The dialog " + Formats::toUtf8(address) + " is open already.");
  open = true;
  modal = modally;
  gui.dialogs.emplace_back(this);
  gui.trace.record({"dialog", {{"url", address}, {"modal", modally}}});
}

void Dialog::close() {
  if (!open) return;
  open = false;
  const Kiln::SmartPtr<Dialog> self(this);
  std::erase(gui.dialogs, self);
  gui.world.face.dialogClosed(*this);
}

Gui::Gui(GuiWorld guiWorld, const Trace& eventTrace)
    : world(std::move(guiWorld)),
      trace(eventTrace),
      panelOfTabs(make<TabPanel>(eventTrace)),
      ready(make<HostSignal<Kiln::SmartPtr<Kiln::XUL::GUI>>>(eventTrace, "gui-ready", u"GUI")) {}

void Gui::loadTab(std::u16string_view url) { layouts.push_back(world.layouts.read(url, world.widgets)); }

void Gui::fireReady() { ready->fire(this); }

void Gui::cancelDialogs() {
  while (!dialogs.empty()) {
    const Kiln::SmartPtr<Dialog> topmost(dialogs.back());
    topmost->dismiss();
    topmost->close();
  }
}

WidgetNode* Gui::find(std::u16string_view id) const {
  for (const Layout& layout : layouts)
    if (WidgetNode* widget = layout.find(id)) return widget;
  return nullptr;
}

void Gui::load(Kiln::WStringView url) {
  trace.record({"load", {{"url", std::u16string(url.view())}}});
  try {
    loadTab(url);
  } catch (const std::runtime_error& error) {
    throw failure(error.what());
  }
}

Kiln::SmartPtr<Kiln::XUL::Widget> Gui::widgetById(Kiln::WStringView id) { return asWidget(find(id)); }

Kiln::SmartPtr<Kiln::XUL::SubDialog> Gui::openDialog(Kiln::WStringView url) {
  trace.record({"load", {{"url", std::u16string(url.view())}}});
  try {
    return make<Dialog>(*this, std::u16string(url.view()), world.layouts.read(url, world.widgets));
  } catch (const std::runtime_error& error) {
    world.actions->failed(error.what());
    world.face.showFailure(error.what());
    return {};
  }
}

}  // namespace Refhost
