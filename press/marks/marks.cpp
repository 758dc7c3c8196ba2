#include "press/marks/marks.h"

#include "formats/sentences.h"
#include "press/error.h"
#include "press/marks/watermark_form.h"
#include "press/pages/form.h"
#include "press/pdf/form_fields.h"
#include "press/pdf/layers.h"
#include "press/pdf/object_depth.h"
#include "press/text/outlines.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>

namespace Press {
namespace {

namespace fs = std::filesystem;

// Whether to draw at this turn a mark wanted once per sheet or, with `onEachPage`, on each of its pages.
bool isTimeFor(const Turn& turn, bool onEachPage) {
  return turn.kind == Turn::Kind::page || (turn.kind == Turn::Kind::pageOnSheet) == onEachPage;
}

fs::file_time_type timeOf(const fs::path& file) {
  std::error_code ignored;  // a file without a time cannot be opened either
  return fs::last_write_time(file, ignored);
}

}  // namespace

bool Marks::isCurrent(const std::pair<const fs::path, Source>& source) {
  return source.second.time == timeOf(source.first);
}

Marks::Marks(QPDF& document) : pdf(document) {}

void Marks::prepare(const Effects& wanted) {
  if (isReady && wanted == effects && std::ranges::all_of(sources, isCurrent)) return;
  isReady = false;
  effects = wanted;
  sentences.clear();
  version.clear();
  allForms = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
  prepareWatermark();
  prepareOverlays();
  isReady = true;
}

void Marks::prepareWatermark() {
  watermark = {};
  if (effects.watermark.text.empty()) return;
  const Outlines outlines = outlinesOf(effects.watermark);
  if (outlines.empty()) return;
  sentences = outlines.notes;
  watermark = {watermarkForm(pdf, effects.watermark, outlines), "/KilnW"};
  watermarkBounds = outlines.bounds;
  if (effects.watermark.transparency > 0) version = "1.4";
}

void Marks::prepareOverlays() {
  overlays.clear();
  for (const Overlay& overlay : effects.overlays) {
    const Source& source = open(overlay.file);
    std::size_t first = 0;
    while (first < overlays.size() && overlays[first].source != &source) ++first;
    const std::string name = first < overlays.size() ? overlays[first].form.name : "/KilnO" + std::to_string(first + 1);
    overlays.push_back({&source, {source.form, name}});
    version = std::max(version, source.document.pdf->getPDFVersion());
  }
}

// Copies the file's first page into the job. Reopens a file that has changed.
const Marks::Source& Marks::open(const fs::path& file) {
  const auto known = sources.find(file);
  if (known != sources.end() && isCurrent(*known)) return known->second;

  Source source{.time = timeOf(file), .document = openDocument(file)};
  try {
    drawWaitingFields(source.document);
    const PageEntry& entry = source.document.pages.front();
    const PageShape shape = shapeOf(entry);
    PageContent content(*source.document.pdf);
    Annotations annotations(content);
    QPDFObjectHandle form = pageAsForm(content, annotations, entry, shape);
    if (form.isNull()) throw std::runtime_error(Formats::sentence("its page cannot be read"));
    if (isNestedTooDeeply(form)) throw std::runtime_error(Formats::sentence("its parts are nested too deeply"));
    source.frame = shape;
    source.form = pdf.copyForeignObject(form);
    takeLayers(*source.document.pdf, pdf);
  } catch (const std::exception& problem) {
    throw Error(
        Formats::sentence("{1} cannot be printed as an overlay ({2}): create the overlay again, or choose another one.",
                          quoted(file), problem.what()));
  }
  return sources.insert_or_assign(file, std::move(source)).first->second;
}

std::string Marks::under(const PageFrame& page, const Turn& turn, QPDFObjectHandle resources) {
  return draw(false, page, turn, resources);
}

std::string Marks::over(const PageFrame& page, const Turn& turn, QPDFObjectHandle resources) {
  return draw(true, page, turn, resources);
}

std::string Marks::draw(bool isOver, const PageFrame& page, const Turn& turn, QPDFObjectHandle resources) {
  std::string content;
  if (isOver == effects.overlaysOverPage && isTimeFor(turn, effects.overlaysOnEachPage)) {
    for (std::size_t index = 0; index < overlays.size(); ++index) {
      if (!effects.overlays[index].pages.has(turn.number)) continue;
      const Matrix matrix = fitInto(seenBox(page), overlays[index].source->frame) * fromSeen(page);
      content += call(overlays[index].form, matrix, resources);
    }
  }
  const Watermark& mark = effects.watermark;
  if (drawsWatermark() && isOver != mark.isUnderPage && isTimeFor(turn, mark.onEachPage) &&
      (turn.number == 1 || !mark.firstOnly))
    content += call(watermark, placeMark(page, watermarkBounds, mark), resources);
  return content;
}

// Content that draws a form. Adds it to the page's own /XObject dictionary; pages without one share one.
std::string Marks::call(Form& form, const Matrix& matrix, QPDFObjectHandle resources) {
  QPDFObjectHandle forms = resources.getKey("/XObject");
  if (!forms.isDictionary()) {
    resources.replaceKey("/XObject", allForms);
    forms = allForms;
  }
  while (forms.hasKey(form.name) && !forms.getKey(form.name).isSameObjectAs(form.object)) form.name += "x";
  forms.replaceKey(form.name, form.object);
  return "q " + concatenation(matrix) + " " + form.name + " Do Q\n";
}

}  // namespace Press
