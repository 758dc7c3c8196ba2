#include "window/preferences/action_names.h"

#include "formats/names.h"

#include <QAccessible>
#include <QWidget>

#include <string_view>

namespace Window {
namespace {

struct NamedCommand {
  std::string_view command;
  const char* text;
};

constexpr NamedCommand namedCommands[] = {{"defaults", "RESTORE"},
                                          {"load-ticket", "ACTION_TICKET"},
                                          {"preset", "ACTION_PRESET"},
                                          {"import-profile", "ACTION_PROFILE"},
                                          {"print-overlay", "ACTION_OVERLAY_ADD"},
                                          {"rename-overlay", "ACTION_OVERLAY_RENAME"},
                                          {"restore-watermarks", "ACTION_WATERMARKS_BACK"}};

struct NamedButton {
  Formats::Name id;
  const char* text;
};

// Whose labels alone do not say what they do.
constexpr NamedButton namedButtons[] = {{Formats::WidgetId::watermarkAdd, "ACTION_WATERMARK_ADD"},
                                        {Formats::WidgetId::watermarkEdit, "ACTION_WATERMARK_EDIT"},
                                        {Formats::WidgetId::watermarkDelete, "ACTION_WATERMARK_DELETE"},
                                        {Formats::WidgetId::overlayDelete, "ACTION_OVERLAY_DELETE"}};

}  // namespace

QString nameOf(const Refhost::UserAction& action, const Texts& texts, const QWidget& tabs) {
  for (const NamedCommand& each : namedCommands)
    if (each.command == action.command) return texts(each.text);
  if (action.arguments.empty()) return {};
  for (const NamedButton& each : namedButtons)
    if (each.id == action.arguments.front()) return texts(each.text);
  auto* widget = tabs.findChild<QWidget*>(toQt(action.arguments.front()));
  QAccessibleInterface* read = widget == nullptr ? nullptr : QAccessible::queryAccessibleInterface(widget);
  QString name = read == nullptr ? QString() : read->text(QAccessible::Name);
  while (name.endsWith(u':') || name.endsWith(u'.') || name.endsWith(u'\uFF1A')) name.chop(1);
  return name.trimmed();
}

}  // namespace Window
