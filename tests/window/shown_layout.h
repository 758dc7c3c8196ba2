// A test layout, shown in a window with the host's widgets only.
#pragma once

#include "host/chrome/layout.h"
#include "tests/support/function_slot.h"
#include "tests/window/open_window.h"
#include "window/page/paper.h"
#include "window/widgets/tree_view.h"

#include <QBoxLayout>
#include <QDir>

#include <optional>

namespace Testing {

class ShownLayout {
 public:
  // Shows a tab with that content, with `files` beside it.
  explicit ShownLayout(const std::string& content, const std::map<std::string, std::string>& files = {}) {
    QDir(folder.path()).mkpath("test/content/en-US");
    write("tab.xul",
          "<tabpanel xmlns='http://www.mozilla.org/keymaster/gatekeeper/there.is.only.xul'>" + content + "</tabpanel>");
    write("en-US/strings.dtd", "");
    QDir(folder.path()).mkpath("window/content/en-US");
    QFile::copy(RESOURCES_FOLDER "/window/content/en-US/strings.dtd",
                folder.filePath("window/content/en-US/strings.dtd"));
    for (const auto& [name, bytes] : files) write(name, bytes);
    strings.emplace(chrome, "en-US");
    world.emplace(Refhost::WidgetWorld{trace,
                                       *strings,
                                       {},
                                       [](const auto& action) { action(); },
                                       [this](Refhost::WidgetNode& node) {
                                         if (view) view->update(node);
                                       }});
    layout = Refhost::LayoutReader(chrome, {}).read(u"chrome://test/content/tab.xul", *world);
    Window::Surroundings around{Window::Texts(*strings), chrome, Window::paperOf(u"A4")};
    around.registeredPicture = [this](const std::u16string& name) { return pictures[name]; };
    view = std::make_unique<Window::TreeView>(*layout.root, around, &window);
    (new QVBoxLayout(&window))->addWidget(view->widget());
    window.show();
    QApplication::setActiveWindow(&window);
  }

  ~ShownLayout() { view->forget(); }

  template <class Widget>
  Widget& find(const char* name) {
    auto* found = window.findChild<Widget*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("no such widget: ") + name);
    return *found;
  }

  template <class Node>
  Node& node(std::u16string_view id) {
    return dynamic_cast<Node&>(*layout.find(id));
  }

  template <class Arg>
  void follow(const Kiln::SmartPtr<Kiln::Signal<Arg>>& signal, std::function<void(Arg)> handler) {
    Testing::follow<Arg>(target, signal, std::move(handler));
  }

  void write(const std::string& name, const std::string& bytes) {
    QFile file(folder.filePath("test/content/" + QString::fromStdString(name)));
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no such folder");
    file.write(QByteArray::fromStdString(bytes));
  }

  QTemporaryDir folder;
  Kiln::SignalTarget target;
  Refhost::Trace trace;
  Refhost::ChromeFolders chrome{folder.path().toStdU16String()};
  std::optional<Refhost::StringTables> strings;
  std::optional<Refhost::WidgetWorld> world;
  Refhost::Layout layout;
  std::map<std::u16string, std::u16string> pictures;  // addresses by registered name
  QWidget window;
  std::unique_ptr<Window::TreeView> view;
};

}  // namespace Testing
