#include "press/pages/wrap.h"

#include "formats/sentences.h"
#include "press/pages/mirror_and_rotation.h"
#include "press/pdf/structure.h"

#include <stdexcept>

namespace Press {
namespace {

// The resources of the page's content. Shared resources are extended in place, since adding an unused name affects no
// page.
QPDFObjectHandle resourcesFor(const PageEntry& entry) {
  QPDFObjectHandle page = entry.page;
  QPDFObjectHandle resources = entry.resources;
  return resources.isDictionary() ? resources
                                  : page.replaceKeyAndGetNew("/Resources", QPDFObjectHandle::newDictionary());
}

// Whether the page may paint with patterns. These are anchored to the page, regardless of content before, but move
// with a form that uses them.
bool hasPatterns(QPDFObjectHandle resources) { return resources.getKeyIfDict("/Pattern").isDictionary(); }

// Content wrapped in q and Q; empty for empty content.
std::string enclosed(const std::string& content) { return content.empty() ? content : "q\n" + content + "Q\n"; }

}  // namespace

PageWrap::PageWrap(QPDF& document, Marks& marksOnIt)
    : pdf(document),
      content(document),
      annotations(content),
      marks(marksOnIt) {}

void PageWrap::prepare(const Effects& wanted) {
  marks.prepare(wanted);
  effects = wanted;
}

void PageWrap::apply(const PageEntry& entry, const Turn& turn) {
  QPDFObjectHandle page = entry.page;
  QPDFObjectHandle resources = resourcesFor(entry);
  const PageShape shape = shapeOf(entry);
  const std::string placed = placement(shape, effects);
  Streams streams = content.streamsOf(page);
  const bool patternsMove = !placed.empty() && hasPatterns(resources);
  if (!streams.empty() && (patternsMove || !content.standsAlone(streams))) enclose(entry, shape, streams, resources);

  std::string over = annotations.draw(page, shape, resources);
  const std::string under = marks.under(shape, turn, resources);
  over += marks.over(shape, turn, resources);
  std::string before = "q\n" + placed + under;
  std::string after = "\nQ\n" + enclosed(over.empty() ? over : placed + over);
  if (effects.anyPaint()) {
    // Paint the paper white, since blank paper has no colour to blend with.
    before.insert(0, "q 1 1 1 rg " + rectangle(shape.reach) + " f Q\n");
    for (const PageEffect& effect : pageEffects)
      if (effects.*effect.isOn && !effect.paint.blendMode.empty()) after += paintOver(effect.paint, shape, resources);
    page.replaceKey("/Group", rgbGroup);
  }
  streams.insert(streams.begin(), content.shared(before));
  streams.push_back(content.shared(after));
  page.replaceKey("/Contents", QPDFObjectHandle::newArray(streams));
}

std::vector<std::string> PageWrap::notes() const {
  if (!annotations.metOneWithoutLook()) return {};
  if (effects.pagesOnSheet > 1)
    return {
        Formats::sentence("Some of the job's annotations do not say how they look, so they are left out where several "
                          "pages share a sheet.")};
  if (effects.anyPageEffect())
    return {Formats::sentence("Some of the job's annotations do not say how they look, so they are left to the reader, "
                              "which shows them without the effects.")};
  return {};
}

// Moves the content into a form, which isolates its graphics state. Leaves content that cannot be converted unchanged.
void PageWrap::enclose(const PageEntry& entry, const PageShape& shape, Streams& streams, QPDFObjectHandle& resources) {
  QPDFObjectHandle form = content.asForm(shape.reach, streams, resources);
  if (form.isNull()) return;
  QPDFObjectHandle page = entry.page;
  moveStructure(pdf, content, page, form);
  resources = QPDFObjectHandle::newDictionary();
  dictionaryIn(resources, "/XObject").replaceKey("/KilnPage", form);
  page.replaceKey("/Resources", resources);
  streams = {content.shared("/KilnPage Do\n")};
}

// Content that blends a colour with everything below it. Requires an RGB page group, in which blending means the same
// for colours of any colour space.
std::string PageWrap::paintOver(const Paint& paint, const PageShape& shape, QPDFObjectHandle& resources) {
  if (!rgbGroup.isInitialized())
    rgbGroup = pdf.makeIndirectObject("<< /S /Transparency /CS /DeviceRGB /I true >>"_qpdf);
  PaintState& state = paintStates[paint.name];
  if (!state.object.isInitialized()) {
    state.name = paint.name;
    state.object = pdf.makeIndirectObject(QPDFObjectHandle::parse("<< /BM " + std::string(paint.blendMode) + " >>"));
  }
  QPDFObjectHandle states = dictionaryIn(resources, "/ExtGState");
  while (states.hasKey(state.name) && !states.getKey(state.name).isSameObjectAs(state.object))
    state.name = std::string(paint.name) + std::to_string(++state.namesMade);
  states.replaceKey(state.name, state.object);
  return "q " + state.name + " gs " + std::string(paint.colour) + " " + rectangle(shape.reach) + " f Q\n";
}

}  // namespace Press
