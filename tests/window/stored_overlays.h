// A home with overlays, for tests.
#pragma once

#include "window/window.h"

#include <QDir>
#include <QFile>

#include <filesystem>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Testing {

// Stores overlays: their index, and files without a thumbnail.
inline void putOverlays(const std::filesystem::path& home, const std::vector<std::pair<QString, QString>>& overlays) {
  const QDir folder(QString::fromStdU16String((home / "profile/overlays").u16string()));
  folder.mkpath(".");
  QFile index(folder.filePath("ovlNmFl.flo"));
  if (!index.open(QIODevice::WriteOnly)) throw std::runtime_error("no index");
  for (const auto& [name, fileName] : overlays) {
    const QString record = name.leftJustified(64, QChar()) + fileName.leftJustified(13, QChar());
    index.write(reinterpret_cast<const char*>(record.utf16()), record.size() * qsizetype(sizeof(QChar)));
    QFile file(folder.filePath(fileName));
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no overlay");
  }
}

// Opens the window with two overlays, printed on several pages.
inline void useSeveralOverlays(Window::Request& request) {
  putOverlays(request.preferences.home, {{QStringLiteral("Letterhead of the head office"), QStringLiteral("00001.opa")},
                                         {QStringLiteral("Terms"), QStringLiteral("00002.opa")}});
  request.preferences.properties = {
      {u"OverlaySel", u"Multiple"},
      {u"MultipleOverlayDetails", u"00001.opa;Odd$00002.opa;Even$00001.opa;2,5-9$;$;$;$;$;$"}};
}

}  // namespace Testing
