#pragma once

#include "press/job/effects.h"
#include "press/marks/place.h"
#include "press/pages/content.h"
#include "press/pdf/document.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Press {

// A page or sheet of the printed job.
struct Turn {
  enum class Kind { page, pageOnSheet, sheet };
  Kind kind = Kind::page;
  int number = 1;  // from 1
};

// The watermark and overlays of a job. Each is stored once in the document and drawn by a line of content on each
// page.
class Marks {
 public:
  // The document must outlive this object, and this object must exist until the document is written.
  explicit Marks(QPDF& document);

  // Prepares the marks of these effects. Throws Error with the file's name for a mark that cannot be printed.
  void prepare(const Effects& effects);

  // Content to draw below or above the page's content, with line breaks; empty for none. Adds the forms it uses to
  // `resources`.
  std::string under(const PageFrame& page, const Turn& turn, QPDFObjectHandle resources);
  std::string over(const PageFrame& page, const Turn& turn, QPDFObjectHandle resources);

  // Whether there is a visible watermark.
  bool drawsWatermark() const { return watermark.object.isInitialized(); }

  // Sentences about deviations from the requested effects.
  const std::vector<std::string>& notes() const { return sentences; }

  // The minimum PDF version that the marks need; empty for any.
  const std::string& pdfVersion() const { return version; }

 private:
  struct Form {
    QPDFObjectHandle object;
    std::string name;  // in the resources
  };
  struct Source {
    std::filesystem::file_time_type time;  // the file's last change before it was opened
    Document document;
    PageFrame frame = {};
    QPDFObjectHandle form = {};  // in the job
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
  std::vector<PreparedOverlay> overlays;  // in the order of `effects`
  std::map<std::filesystem::path, Source> sources;
  QPDFObjectHandle allForms;  // the shared /XObject dictionary of pages without one of their own
  std::vector<std::string> sentences;
  std::string version;
  bool isReady = false;
};

}  // namespace Press
