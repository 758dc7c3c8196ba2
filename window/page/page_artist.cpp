#include "window/page/page_artist.h"

#include "press/job/overlay_words.h"
#include "press/job/print.h"
#include "press/pictures/loader.h"
#include "window/language/texts.h"
#include "window/page/paper.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>

namespace Window {
namespace {

// A page's size is measured on drafts: a coarse one that is cheap for any size, then one at the resolution of page
// units, unless that is huge.
constexpr double coarseDpi = 9;
constexpr double fineDpi = 72;
constexpr double mostPixels = 8e6;

// The limits for enlarging small pages, and for zooming into large ones, whose pictures are scaled from there.
constexpr double finestDpi = 600;
constexpr double mostPixelsDrawn = 32e6;

// What is drawn to see whether a mark is covered: strokes of a watermark's letters are wider than a pixel.
constexpr double examinedDpi = 48;

double resolutionOf(const PageOrder& order, const QSizeF& inches) {
  const double fitting = std::min(order.room.width() / inches.width(), order.room.height() / inches.height());
  const double wanted = order.resolution > 0 ? order.resolution : fitting;
  return std::min({wanted, finestDpi, std::sqrt(mostPixelsDrawn / (inches.width() * inches.height()))});
}

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
      prepare(order.document);
      result.edition = edition;
      result.pages = job->pageCount();
      result.pagesOnSheet = order.effects.pagesOnSheet;
      result.overlays = overlaysOf(order.effects, result.pages);
      const int page = std::clamp(order.page, 1, result.pages);
      const std::string printed = job->printPage(page, order.effects);
      for (const std::string& note : job->notes()) result.notes += plainText(QString::fromStdString(note)) + '\n';
      result.notes.chop(1);
      result.millimetres = measure(printed, {(page - 1) / result.pagesOnSheet, result.pagesOnSheet});
      const QSizeF inches = result.millimetres / millimetresPerInch;
      result.image = toImage(Press::drawPage(printed, 1, resolutionOf(order, inches)));
    } catch (const std::exception& error) {
      result.failure = plainText(QString::fromUtf8(error.what()));
    }
    return result;
  }

  QImage drawSmall(const PageOrder& order) {
    try {
      prepare(order.document);
      const std::string printed = job->printPage(std::clamp(order.page, 1, job->pageCount()), order.effects);
      const QSizeF inches = sketch(printed, coarseDpi);
      return toImage(Press::drawPage(printed, 1, resolutionOf(order, inches)));
    } catch (const std::exception&) {
      return {};
    }
  }

  HiddenMarks examine(const PageOrder& order) {
    HiddenMarks hidden;
    Press::Effects without = order.effects;
    Press::Effects over = order.effects;
    try {
      prepare(order.document);
      if (order.effects.watermark.isUnderPage && !order.effects.watermark.text.empty()) {
        without.watermark.text.clear();
        over.watermark.isUnderPage = false;
        hidden.watermark = isHidden(order, without, over);
      }
      if (!order.effects.overlaysOverPage && !order.effects.overlays.empty()) {
        without = over = order.effects;
        without.overlays.clear();
        over.overlaysOverPage = true;
        hidden.overlays = isHidden(order, without, over);
      }
    } catch (const std::exception&) {  // the picture's failure tells it
    }
    return hidden;
  }

 private:
  // Whether the page looks as without a mark, although the mark would be seen over the page.
  bool isHidden(const PageOrder& order, const Press::Effects& without, const Press::Effects& over) {
    const int page = std::clamp(order.page, 1, job->pageCount());
    const auto look = [&](const Press::Effects& effects) {
      const std::string printed = job->printPage(page, effects);
      const QSizeF inches = sketch(printed, coarseDpi);
      const double dpi = std::min(examinedDpi, std::sqrt(mostPixels / (inches.width() * inches.height())));
      return Press::drawPage(printed, 1, dpi).argb;
    };
    const auto bare = look(without);
    return look(order.effects) == bare && look(over) != bare;
  }

  void prepare(const Press::JobFile& file) {
    if (!job || file != document || timeOf(document.file) != time) open(file);
  }

  // Its index, from 0, and the number of pages per sheet.
  using Sheet = std::pair<int, int>;

  void open(const Press::JobFile& file) {
    job.reset();
    sizes.clear();
    document = file;
    time = timeOf(file.file);
    ++edition;
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
  int edition = 0;
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

void PageArtist::drawSmall(const PageOrder& order, int label) {
  QMetaObject::invokeMethod(desk.get(), [this, order, label] {
    const QImage image = desk->drawSmall(order);
    QMetaObject::invokeMethod(this, [this, page = order.page, image, label] { Q_EMIT drawnSmall(page, image, label); });
  });
}

void PageArtist::examine(const PageOrder& order) {
  const int number = latest.load();
  QMetaObject::invokeMethod(desk.get(), [this, order, number] {
    if (number != latest.load()) return;
    const HiddenMarks hidden = desk->examine(order);
    QMetaObject::invokeMethod(this, [this, hidden, number] {
      if (number == latest.load()) Q_EMIT examined(hidden);
    });
  });
}

}  // namespace Window
