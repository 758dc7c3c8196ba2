// A small host: it opens a plug-in, operates it by a script, and prints what the plug-in does.
//
//   example_host LIBRARY RESOURCES SCRIPT
//
// LIBRARY is the plug-in's, RESOURCES the folder of the packages. A line of SCRIPT is one of these, or a comment after
// "#":
//
//   plugin NAME                         the plug-in's name
//   setting KEY VALUE                   a setting of the host
//   read-only                           no file can be written
//   property NAME VALUE [OPTION...]     a property of the model, its value, and its options
//   layout URL                          a layout or dialog; its widgets follow:
//   checkbox ID, button ID, textbox ID
//
//   open                                from here on the plug-in is running
//   click ID, type ID TEXT              what the user does; "ok" and "cancel" close the topmost dialog
//   allow NAME OPTION, forbid ...       an option becomes available, or not
//   set NAME VALUE                      the host changes a property
//   disturb                             another program changes the file that the plug-in writes next
//   help, accept                        the user asks for help, or accepts the preferences
//   expect NAME VALUE                   the property has that value
//   expect-failure                      the action before has failed
//
// Exits with 1 when an expectation is not met, an action failed unexpectedly, or the plug-in has left memory behind.
#include "library.h"
#include "properties.h"
#include "services.h"
#include "widgets.h"

#include <sstream>

namespace ExampleHost {
namespace {

class Run {
 public:
  Run(const fs::path& libraryFile, const fs::path& resources, std::istream& lines)
      : script(lines),
        library(make<Library>(libraryFile)),
        host(resources) {
    properties->settings->set(u"UIMode", u"DocProp");
  }

  // Returns false when an expectation was not met.
  bool run() {
    runUntilClosed(0);
    if (!problem.empty()) throw std::runtime_error(problem);
    return isGood;
  }

 private:
  // Runs the script to its end, or until there are no more than so many open dialogs.
  void runUntilClosed(std::size_t dialogs) {
    for (std::string line; std::getline(script, line);) {
      std::istringstream words(line);
      std::string command;
      if (!(words >> command) || command.starts_with('#')) continue;
      if (command == "expect-failure") {
        if (problem.empty()) throw std::runtime_error("No failure came before " + line);
        problem.clear();
        continue;
      }
      if (!problem.empty()) throw std::runtime_error(problem);
      std::printf("%s\n", line.c_str());
      try {
        plugin ? act(command, words) : declare(command, words);
      } catch (const std::exception& failed) {
        // The exception's code may be the plug-in's, so that only its sentence leaves this place.
        report(std::string("fails: ") + failed.what());
        problem = failed.what();
      }
      if (gui->open.size() < dialogs) return;
    }
    while (dialogs > 0 && gui->open.size() >= dialogs) gui->open.back()->close(false);
  }

  static std::u16string word(std::istream& words) {
    std::string next;
    words >> next;
    return wide(next);
  }

  static std::u16string remainder(std::istream& words) {
    std::string rest;
    std::getline(words >> std::ws, rest);
    return wide(rest);
  }

  void declare(const std::string& command, std::istream& words) {
    const std::u16string first = word(words);
    if (command == "plugin") {
      name = narrow(first);
    } else if (command == "setting") {
      properties->settings->set(first, remainder(words));
    } else if (command == "property") {
      const auto property = make<ModelProperty>();
      property->name = first;
      property->value = word(words);
      for (std::string option; words >> option;) property->options[wide(option)] = true;
      properties->model->add(property);
    } else if (command == "layout") {
      layout = &layouts[first];
    } else if (command == "read-only") {
      host.disk.isReadOnly = true;
    } else if (command == "open") {
      open();
    } else if (layout == nullptr || !addWidget(command, first)) {
      throw std::runtime_error("Not a declaration: " + command);
    }
  }

  bool addWidget(const std::string& kind, const std::u16string& id) {
    auto& widget = (*layout)[id];
    if (kind == "checkbox") widget = make<CheckBox>(id);
    if (kind == "button") widget = make<Button>(id);
    if (kind == "textbox") widget = make<TextBox>(id);
    return static_cast<bool>(widget);
  }

  // The order of calls in kiln/plugin.h.
  void open() {
    plugin = library->create(host, properties, name);
    plugin->create();
    plugin->initialise();
    plugin->configureUI(gui);
    gui->ready->fire(gui);
    properties->model->announce();
  }

  void act(const std::string& command, std::istream& words) {
    const std::u16string first = word(words);
    if (command == "click" && gui->operable(first)) {
      click(*gui->operable(first));
    } else if (command == "type") {
      if (const auto box = Kiln::smartCast<Kiln::XUL::TextBox>(gui->operable(first)))
        static_cast<TextBox&>(*box).type(remainder(words));
    } else if ((command == "ok" || command == "cancel") && !gui->open.empty()) {
      closeDialog(command == "ok");
    } else if (command == "allow" || command == "forbid") {
      properties->model->demand(first).setAvailable(remainder(words), command == "allow");
    } else if (command == "set") {
      properties->model->submit({{first, remainder(words)}});
    } else if (command == "help") {
      gui->panel->selected = first;
      gui->panel->help->fire(Kiln::XUL::EventArg<Kiln::XUL::TabPanel>(gui->panel));
    } else if (command == "accept") {
      gui->panel->preAccept->fire(make<PreAccept>());
    } else if (command == "disturb") {
      host.disk.isDisturbed = true;
    } else if (command == "expect") {
      expect(first, remainder(words));
    } else {
      throw std::runtime_error("Not an action that is possible now: " + command);
    }
  }

  // A widget is asked for its kind by the contract's name; all that have it here are this host's own.
  static void click(Kiln::XUL::Widget& widget) {
    const Kiln::SmartPtr<Kiln::XUL::Widget> held(&widget);
    if (!widget.isEnabled()) throw failure("The widget is disabled.");
    if (const auto box = Kiln::smartCast<Kiln::XUL::CheckBox>(held)) static_cast<CheckBox&>(*box).click();
    if (const auto button = Kiln::smartCast<Kiln::XUL::Button>(held)) static_cast<Button&>(*button).click();
  }

  void closeDialog(bool byOk) {
    Dialog& topmost = *gui->open.back();
    if (byOk && !topmost.okButton()->isEnabled()) throw failure("OK is disabled.");
    topmost.close(byOk);
  }

  void expect(const std::u16string& property, const std::u16string& value) {
    const std::u16string found = properties->model->demand(property).value;
    if (found == value) return;
    std::printf("! %s is %s\n", narrow(property).c_str(), narrow(found).c_str());
    isGood = false;
  }

  std::istream& script;
  std::string name;
  std::string problem;  // of the last action
  bool isGood = true;
  Widgets* layout = nullptr;  // the one that is being declared

  // Destroyed in reverse order: the plug-in, what it is connected to, the host, the library.
  Kiln::SmartPtr<Library> library;
  Host host;
  Layouts layouts;
  Kiln::SmartPtr<PropertyManager> properties = make<PropertyManager>();
  Kiln::SmartPtr<Gui> gui = make<Gui>(layouts, [this] { runUntilClosed(gui->open.size()); });
  Kiln::SmartPtr<Kiln::UIPlugin> plugin;
};

bool runScript(char** arguments) {
  std::ifstream script(arguments[3]);
  if (!script) throw std::runtime_error("The script cannot be read.");
  return Run(arguments[1], arguments[2], script).run();
}

}  // namespace
}  // namespace ExampleHost

int main(int count, char** arguments) {
  if (count != 4) {
    std::fputs("Usage: example_host LIBRARY RESOURCES SCRIPT\n", stderr);
    return 2;
  }
  try {
    const bool isGood = ExampleHost::runScript(arguments);
    if (ExampleHost::memory.blocks == 0) return isGood ? 0 : 1;
    std::fprintf(stderr, "%ld blocks of memory are left.\n", ExampleHost::memory.blocks);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
  }
  return 1;
}
