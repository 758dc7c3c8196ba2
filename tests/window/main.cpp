// The window tests run on an offscreen platform. With "--show" the program instead calls the window library, like `kiln
// show`, and with "--draw FOLDER LOCALE PALETTE" draws the window and its dialogs, to be looked at.
#include "tests/window/all_pictures.h"
#include "window/window.h"

#include <gtest/gtest.h>

#include <QApplication>

#include <dlfcn.h>

#include <cstdlib>
#include <string>

namespace {

// --show DOCUMENT PICTURE MODEL LOCALE
int show(char** arguments) {
  void* library = dlopen(WINDOW_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return EXIT_FAILURE;
  Window::Request request;
  request.preferences.plugin = PLUGIN_FILE;
  request.preferences.resources = RESOURCES_FOLDER;
  request.document = arguments[0];
  request.screenshot = arguments[1];
  request.preferences.model = arguments[2];
  request.preferences.locale = arguments[3];
  return reinterpret_cast<Window::Show*>(dlsym(library, Window::showSymbol))(request);
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 6 && std::string(arguments[1]) == "--show") return show(arguments + 2);
  const char* screens = std::getenv("TESTED_SCREENS");
  setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + std::string(screens ? screens : SCREENS_FILE)).c_str(), 1);
  setenv("CUPS_SERVER", "127.0.0.1:1", 1);  // no printer of this machine
  testing::InitGoogleTest(&count, arguments);
  QApplication application(count, arguments);
  if (count == 5 && std::string(arguments[1]) == "--draw") {
    Testing::drawAll(arguments[2], arguments[3], arguments[4]);
    return EXIT_SUCCESS;
  }
  QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
  return RUN_ALL_TESTS();
}
