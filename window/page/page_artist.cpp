#include "window/page/page_artist.h"

#include "press/job/overlay_words.h"
#include "press/job/print.h"
#include "press/pictures/loader.h"
#include "window/language/texts.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>

namespace Window {
namespace {

constexpr double millimetresPerInch = 25.4;

// A page's size is measured on drafts: a coarse one that is cheap for any size, then one at the resolution of page
// units, unless that is huge.
constexpr double coarseDpi = 9;
constexpr double fineDpi = 72;
constexpr double mostPixels = 8e6;

// The limit for enlarging small pages.
constexpr double finestDpi = 600;

OverlaySummary overlaysOf(const Press::Effects& effects, int pages) {
  OverlaySummary summary;
  summary.countsSheets = Press::overlaysCountSheets(effects);
  summary.words = QString::fromStdString(Press::overlaysInWords(effects, pages));
  for (const std::string& name : Press::overlaysOnNoPage(effects, pages))
    summary.onNoPage.append(QString::fromStdString(name));
  summary.troubles = effects.overlayTroubles;
  for (const Press::OverlayTrouble& trouble : summary.troubles)
    summary.namesInTrouble.append(QString::fromStdString(Press::overlayName(trouble.file)));
  return summary;
}

QImage toImage(const Press::Picture& picture) {
  const QImage borrowed(reinterpret_cast<const uchar*>(picture.argb.data()), picture.width, picture.height,
                        qsizetype{4} * picture.width, QImage::Format_RGB32);
  return borrowed.copy();
}

}  // namespace

// The artist thread's cache: the last job opened, and the sizes of its sheets.
class PageArtist::Desk final : public QObject {
 public:
  PagePicture draw(const PageOrder& order) {
    PagePicture result;
    try {
      if (!job || order.document != document || timeOf(document.file) != time) open(order.document);
      result.pages = job->pageCount();
      result.pagesOnSheet = order.effects.pagesOnSheet;
      result.overlays = overlaysOf(order.effects, result.pages);
      const int page = std::clamp(order.page, 1, result.pages);
      const std::string printed = job->printPage(page, order.effects);
      for (const std::string& note : job->notes()) result.notes += plainText(QString::fromStdString(note)) + '\n';
      result.notes.chop(1);
      result.millimetres = measure(printed, {(page - 1) / result.pagesOnSheet, result.pagesOnSheet});
      const QSizeF inches = result.millimetres / millimetresPerInch;
      const double dpi =
          std::min({order.room.width() / inches.width(), order.room.height() / inches.height(), finestDpi});
      result.image = toImage(Press::drawPage(printed, 1, dpi));
    } catch (const std::exception& error) {
      result.failure = plainText(QString::fromUtf8(error.what()));
    }
    return result;
  }

 private:
  // Its index, from 0, and the number of pages per sheet.
  using Sheet = std::pair<int, int>;

  void open(const Press::JobFile& file) {
    job.reset();
    sizes.clear();
    document = file;
    time = timeOf(file.file);
    job.emplace(file);
  }

  // The file's last change; opening the file reports errors.
  static std::filesystem::file_time_type timeOf(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::last_write_time(file, ignored);
  }

  QSizeF measure(const std::string& printed, const Sheet& sheet) {
    auto known = sizes.find(sheet);
    if (known == sizes.end()) {
      QSizeF inches = sketch(printed, coarseDpi);
      if (inches.width() * inches.height() * fineDpi * fineDpi <= mostPixels) inches = sketch(printed, fineDpi);
      known = sizes.emplace(sheet, inches * millimetresPerInch).first;
    }
    return known->second;
  }

  static QSizeF sketch(const std::string& printed, double dpi) {
    const Press::Picture picture = Press::drawPage(printed, 1, dpi);
    return QSizeF(picture.width, picture.height) / dpi;
  }

  std::optional<Press::Job> job;
  Press::JobFile document;
  std::filesystem::file_time_type time;
  std::map<Sheet, QSizeF> sizes;
};

PageArtist::PageArtist() : desk(std::make_unique<Desk>()) {
  desk->moveToThread(&thread);
  thread.start();
}

PageArtist::~PageArtist() {
  ++latest;
  thread.quit();
  thread.wait();
}

void PageArtist::draw(const PageOrder& order) {
  const int number = ++latest;
  QMetaObject::invokeMethod(desk.get(), [this, order, number] {
    if (number != latest.load()) return;
    const PagePicture picture = desk->draw(order);
    QMetaObject::invokeMethod(this, [this, picture, number] {
      if (number != latest.load()) return;
      told = number;
      Q_EMIT drawn(picture);
    });
  });
}

}  // namespace Window
