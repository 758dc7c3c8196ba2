#include "press/job/capture.h"

#include "formats/sentences.h"
#include "press/error.h"
#include "press/job/overlay_words.h"
#include "press/job/print.h"
#include "press/pictures/bitmap.h"
#include "press/pictures/loader.h"

#include <algorithm>

namespace Press {
namespace {

constexpr int longestSide = 256;  // pixels of a thumbnail
constexpr double coarseDpi = 9;   // enough to measure a page, and cheap even for posters

Picture thumbnail(const std::string& pdf) {
  const Picture sketch = drawPage(pdf, 1, coarseDpi);
  return drawPage(pdf, 1, coarseDpi * longestSide / std::max({sketch.width, sketch.height, 1}));
}

}  // namespace

Capture captureOverlay(const JobFile& in, const Effects& effects, int page) {
  Job job(in);
  Capture capture;
  capture.pdf = job.printPage(page, effects);
  capture.notes = overlayNotes(effects);
  capture.notes.insert(capture.notes.end(), job.notes().begin(), job.notes().end());
  try {
    capture.thumbnail = bitmapFile(thumbnail(capture.pdf));
  } catch (const Error& error) {
    capture.notes.push_back(Formats::sentence("The overlay has no picture of its own. {1}", error.what()));
  }
  return capture;
}

}  // namespace Press
