#include "window/preferences/overlay_naming.h"

#include "formats/names.h"
#include "host/overlay_names.h"

#include <memory>

namespace Window {
namespace {

using Refhost::NameProblem;

struct Names {
  std::vector<std::u16string> reserved;
  std::vector<std::u16string> taken;
};

// The judge of a name: what it says of a name that another overlay has is given.
JudgeName judge(Session& session, std::int32_t except, const NameVerdict& ofTaken) {
  Refhost::Preferences& preferences = session.preferences();
  Refhost::SelectorNode* const list = Refhost::overlayList(preferences);
  const auto names = std::make_shared<Names>();
  names->reserved = Refhost::reservedOverlayNames(preferences.chrome());
  if (list != nullptr) names->taken = Refhost::overlayNames(*list, except);
  const Texts texts = session.texts();
  return [names, ofTaken, missing = texts("NAME_MISSING"), reserved = texts("NAME_RESERVED")](const QString& name) {
    switch (Refhost::problemOf(toWide(name), names->reserved, names->taken)) {
      case NameProblem::missing: return NameVerdict{missing, false};
      case NameProblem::reserved: return NameVerdict{reserved, false};
      case NameProblem::taken: return ofTaken;
      case NameProblem::none: break;
    }
    return NameVerdict{};
  };
}

// The label of a widget of the tabs, without its access key.
QString labelOf(Refhost::Gui& gui, Formats::Name id) {
  const Refhost::WidgetNode* const node = gui.find(id);
  if (node == nullptr) return {};
  QString label = plainText(toQt(node->shownLabel()));
  return label.remove('(' + toQt(node->attribute("accesskey")) + ')', Qt::CaseInsensitive);
}

}  // namespace

QStringList overlaysListed(Session& session) {
  QStringList names;
  Refhost::SelectorNode* const list = Refhost::overlayList(session.preferences());
  for (std::int32_t i = 0; list != nullptr && i < list->items().count(); ++i)
    if (const auto item = list->items().at(i); Refhost::isOverlay(*item)) names << toQt(item->displayedText().view());
  return names;
}

JudgeName judgeOfNew(Session& session) { return judge(session, -1, {session.texts()("NAME_REPLACES"), true}); }

JudgeName judgeOfRenamed(Session& session, std::int32_t index) {
  return judge(session, index, {session.texts()("NAME_TAKEN"), false});
}

QString effectsInOverlay(Session& session) {
  Refhost::Gui* const gui = session.preferences().gui();
  const Press::Effects effects = session.effects();
  if (gui == nullptr || !effects.any()) return {};
  QStringList parts;
  if (!effects.watermark.text.empty()) parts << labelOf(*gui, Formats::WidgetId::watermarkCaption);
  if (!effects.overlays.empty()) parts << labelOf(*gui, Formats::WidgetId::overlayCaption);
  for (const Formats::PageEffect& effect : Formats::PageEffects::all)
    if (session.preferences().model().value(effect.property) == effect.on) parts << labelOf(*gui, effect.box);
  const Texts texts = session.texts();
  if (effects.pagesOnSheet > 1) parts << texts("SEVERAL_ON_SHEET");
  parts.removeAll(QString());
  return parts.isEmpty() ? QString() : texts("OVERLAY_WITH_EFFECTS").arg(parts.join(QStringLiteral(", ")));
}

}  // namespace Window
