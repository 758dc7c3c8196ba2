// Asks the user for a file.
#pragma once

#include "window/texts.h"

#include <QString>

#include <filesystem>
#include <optional>

class QWidget;

namespace Window {

struct FileQuestion {
  // Names of texts: what the dialog is called, and which files it shows.
  const char* title;
  const char* files;

  // Where it looks first; empty for where the last one looked.
  QString folder = {};

  // For a file to write: the ending that a name gets that has none, and the name that is offered. Without an ending it
  // is a file to read.
  QString ending = {};
  QString offered = {};
};

// Nothing when the user gives none.
std::optional<std::filesystem::path> askForFile(const FileQuestion& question, const Texts& texts, QWidget* parent);

}  // namespace Window
