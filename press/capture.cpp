#include "press/capture.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include "press/bitmap.h"
#include "press/error.h"
#include "press/picture_loader.h"
#include "press/print.h"
#include "press/whole_file.h"

namespace fs = std::filesystem;

namespace Press {

namespace {

constexpr int longestSide = 256;  ///< Pixels of a thumbnail.
constexpr double coarseDpi = 9;   ///< Enough to measure a page by, and no effort even for posters.

Picture thumbnail(const std::string& pdf) {
  const Picture sketch = drawPage(pdf, 1, coarseDpi);
  return drawPage(pdf, 1, coarseDpi * longestSide / std::max({sketch.width, sketch.height, 1}));
}

/// Nothing, and a sentence, where the page cannot be drawn.
std::optional<std::string> thumbnailFile(const std::string& pdf, std::vector<std::string>& notes) {
  try {
    return bitmapFile(thumbnail(pdf));
  } catch (const Error& error) {
    notes.push_back("The overlay has no picture of its own. " + std::string(error.what()));
    return std::nullopt;
  }
}

void replaceBoth(const fs::path& destination, const std::string& pdf, const std::optional<std::string>& picture) {
  WholeFile overlay(destination);
  overlay.write(pdf.data(), pdf.size());
  std::optional<WholeFile> beside;
  if (picture) {
    beside.emplace(thumbnailOf(destination));
    beside->write(picture->data(), picture->size());
  }
  overlay.commit();
  if (beside)
    beside->commit();
  else
    fs::remove(thumbnailOf(destination));  // It would show another overlay.
}

}  // namespace

fs::path thumbnailOf(const fs::path& overlay) { return fs::path(overlay).replace_extension(".bmp"); }

std::vector<std::string> captureOverlay(const fs::path& in, const fs::path& destination, const Effects& effects) {
  std::error_code ignored;
  if (fs::equivalent(in, destination, ignored))
    throw Error(quoted(destination) + " is the job itself: choose another file for the overlay.");
  Job job(in);
  const std::string pdf = job.printPage(1, effects);
  std::vector<std::string> notes = job.notes();
  const std::optional<std::string> picture = thumbnailFile(pdf, notes);
  try {
    replaceBoth(destination, pdf, picture);
  } catch (const std::system_error& problem) {
    throw Error(quoted(destination) + " cannot be written (" + problem.code().message() +
                "): choose a folder that exists, may be written to and has room.");
  }
  return notes;
}

}  // namespace Press
