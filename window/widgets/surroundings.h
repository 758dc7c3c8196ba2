// The environment of a view, besides its widget tree. Holds references only.
#pragma once

#include "host/chrome/addresses.h"
#include "window/language/texts.h"

#include <QSizeF>

#include <functional>
#include <string>

namespace Window {

struct Surroundings {
  Texts texts;

  // Outlives all views.
  const Refhost::ChromeFolders& chrome;

  // The sheet shown in previews, in points.
  QSizeF paper;

  // The address of a picture that the plug-in has registered under a name; empty for none.
  std::function<std::u16string(const std::u16string& name)> registeredPicture = [](const auto&) {
    return std::u16string();
  };
};

}  // namespace Window
