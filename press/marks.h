#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "press/document.h"
#include "press/effects.h"
#include "press/mark_place.h"
#include "press/page_content.h"

namespace Press {

/// A page or a sheet among those that are printed.
struct Turn {
  enum class Kind { page, pageOnSheet, sheet };
  Kind kind = Kind::page;
  int number = 1;  ///< From 1.
};

/// The watermark and the overlays of a job: each is stored once in the document, and drawn from each page by a line of
/// content.
class Marks {
 public:
  /// The document must outlive this object, and this object the writing of the document.
  explicit Marks(QPDF& document);

  /// Makes ready what these effects draw. Throws `Error` for a mark that cannot be printed, naming its file.
  void prepare(const Effects& effects);

  /// The content that draws what lies under or over the page's content, with line ends; empty when nothing does. Forms
  /// that it names are added to `resources`.
  std::string under(const PageFrame& page, const Turn& turn, QPDFObjectHandle resources);
  std::string over(const PageFrame& page, const Turn& turn, QPDFObjectHandle resources);

  /// Whether there is a watermark of which anything is seen.
  bool drawsWatermark() const { return watermark.object.isInitialized(); }
  /// Sentences on what is printed otherwise than asked.
  const std::vector<std::string>& notes() const { return sentences; }
  /// The first version of PDF that has all that is drawn; empty where nothing asks for one.
  const std::string& pdfVersion() const { return version; }

 private:
  struct Form {
    QPDFObjectHandle object;
    std::string name;  ///< In resources.
  };
  struct Source {
    std::filesystem::file_time_type time;  ///< When the file was last changed before it was opened.
    Document document;
    PageFrame frame;
    QPDFObjectHandle form;  ///< In the job.
  };
  struct PreparedOverlay {
    const Source* source = nullptr;
    Form form;
  };

  static bool isCurrent(const std::pair<const std::filesystem::path, Source>& source);
  void prepareWatermark();
  void prepareOverlays();
  const Source& open(const std::filesystem::path& file);
  std::string draw(bool isOver, const PageFrame& page, const Turn& turn, QPDFObjectHandle resources);
  std::string call(Form& form, const Matrix& matrix, QPDFObjectHandle resources);

  QPDF& pdf;
  Effects effects;
  Form watermark;
  Box watermarkBounds;
  std::vector<PreparedOverlay> overlays;  ///< As in `effects`.
  std::map<std::filesystem::path, Source> sources;
  QPDFObjectHandle allForms;  ///< The forms of pages that have no others.
  std::vector<std::string> sentences;
  std::string version;
  bool isReady = false;
};

}  // namespace Press
