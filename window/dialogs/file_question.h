// Asks the user for a file.
#pragma once

#include "window/language/texts.h"

#include <QString>

#include <filesystem>
#include <optional>

class QWidget;

namespace Window {

struct FileQuestion {
  // Names of texts: the dialog's title and its file filter.
  const char* title;
  const char* files;

  // The initial folder; empty for the last one used.
  QString folder = {};

  // To save a file: the default suffix, and the suggested name. Without a suffix, the dialog opens a file.
  QString ending = {};
  QString offered = {};
};

// Nothing when the user cancels.
std::optional<std::filesystem::path> askForFile(const FileQuestion& question, const Texts& texts, QWidget* parent);

}  // namespace Window
