// The environment of a view, besides its widget tree. Holds references only.
#pragma once

#include "host/chrome/addresses.h"
#include "host/user_actions.h"
#include "window/language/texts.h"
#include "window/page/page_artist.h"

#include <QSizeF>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Window {

struct Surroundings {
  Texts texts;

  // Outlives all views.
  const Refhost::ChromeFolders& chrome;

  // The sheet shown in previews, in points.
  QSizeF paper;

  // The page that previews show on that sheet, whose size takes its place; nothing for a blank sheet.
  std::optional<PageOrder> page = std::nullopt;

  // What the user's input is forwarded to.
  std::shared_ptr<Refhost::UserActions> actions = std::make_shared<Refhost::UserActions>();

  // The address of a picture that the plug-in has registered under a name; empty for none.
  std::function<std::u16string(const std::u16string& name)> registeredPicture = [](const auto&) {
    return std::u16string();
  };
};

}  // namespace Window
