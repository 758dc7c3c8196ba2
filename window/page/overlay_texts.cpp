#include "window/page/overlay_texts.h"

#include <QStringList>

namespace Window {

OverlayTexts::OverlayTexts(const Texts& texts)
    : byPage(texts("OVERLAYS_BY_PAGE")),
      bySheet(texts("OVERLAYS_BY_SHEET")),
      onNoPage(texts("OVERLAY_ON_NO_PAGE")),
      noPages(texts("OVERLAY_NO_PAGES")),
      namesNoPage(texts("OVERLAY_NAMES_NO_PAGE")),
      folder(texts("OVERLAY_FOLDER")),
      noneAssigned(texts("OVERLAYS_NONE_ASSIGNED")) {}

QString OverlayTexts::sentences(const OverlaySummary& overlays) const {
  QStringList lines;
  if (!overlays.words.isEmpty()) lines.append((overlays.countsSheets ? bySheet : byPage).arg(overlays.words));
  for (const QString& name : overlays.onNoPage) lines.append(onNoPage.arg(name));
  qsizetype index = 0;
  for (const Press::OverlayTrouble& each : overlays.troubles) {
    const QString& name = overlays.namesInTrouble[index++];
    const QString text = trouble(each.kind);
    if (each.kind == Press::OverlayTrouble::Kind::namesNoPage)
      lines.append(text.arg(name, QString::fromStdString(each.text)));
    else
      lines.append(text.contains("%1") ? text.arg(name) : text);
  }
  for (QString& line : lines) line = plainText(line);
  return lines.join('\n');
}

QString OverlayTexts::trouble(Press::OverlayTrouble::Kind kind) const {
  using Kind = Press::OverlayTrouble::Kind;
  switch (kind) {
    case Kind::noPages: return noPages;
    case Kind::namesNoPage: return namesNoPage;
    case Kind::folder: return folder;
    case Kind::noneAssigned: return noneAssigned;
  }
  return {};
}

}  // namespace Window
