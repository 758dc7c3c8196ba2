#include "press/page_wrap.h"

#include <algorithm>
#include <stdexcept>

#include <qpdf/Pipeline.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>
#include <qpdf/QPDFAnnotationObjectHelper.hh>

#include "press/content_scan.h"

namespace Press {

namespace {

// What a document may cost beyond its own size. A few kilobytes can describe terabytes of content; what goes beyond
// these is still printed, by means that need not look into it, or refused.
constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr std::size_t mostToScanOfOnePage = 64 * mebibyte;
constexpr std::size_t mostToScan = 512 * mebibyte;
constexpr std::size_t mostToJoin = 64 * mebibyte;
constexpr int mostParts = 4'000'000;

/// Collects decoded data and breaks off where there is too much of it.
class Collector : public Pipeline {
 public:
  Collector(std::string& collected, std::size_t most)
      : Pipeline("page content", nullptr),
        text(collected),
        limit(most) {}

  void write(const unsigned char* data, std::size_t size) override {
    if (size > limit - text.size()) throw std::length_error("too much content");
    text.append(reinterpret_cast<const char*>(data), size);
  }
  void finish() override {}

 private:
  std::string& text;
  std::size_t limit;
};

std::string deflated(const std::string& data) {
  std::string result;
  Pl_String sink("deflated", nullptr, result);
  Pl_Flate deflate("deflate", &sink, Pl_Flate::a_deflate);
  deflate.writeString(data);
  deflate.finish();
  return result;
}

/// A dictionary inside another one, made when it is not there.
QPDFObjectHandle dictionaryIn(QPDFObjectHandle parent, const std::string& key) {
  QPDFObjectHandle dictionary = parent.getKey(key);
  return dictionary.isDictionary() ? dictionary : parent.replaceKeyAndGetNew(key, QPDFObjectHandle::newDictionary());
}

/// The resources that the page's content sees. Adding a name that nothing uses yet changes no page, so resources that
/// pages share are extended where they are.
QPDFObjectHandle resourcesFor(const PageEntry& entry) {
  QPDFObjectHandle page = entry.page;
  QPDFObjectHandle resources = entry.resources;
  return resources.isDictionary() ? resources
                                  : page.replaceKeyAndGetNew("/Resources", QPDFObjectHandle::newDictionary());
}

/// Whether the page may paint with patterns. They keep to the page whatever is put before the content, but move with a
/// form that uses them.
bool hasPatterns(QPDFObjectHandle resources) { return resources.getKeyIfDict("/Pattern").isDictionary(); }

/// The appearance that an annotation is printed with, or null. It is a stream of its own so that it can carry the
/// annotation's layer.
QPDFObjectHandle printedAppearance(QPDFAnnotationObjectHelper& annotation) {
  QPDFObjectHandle appearance = annotation.getAppearanceStream("/N");
  if (!appearance.isStream()) return QPDFObjectHandle::newNull();
  QPDFObjectHandle layer = annotation.getObjectHandle().getKey("/OC");
  if (!layer.isNull()) {
    appearance = appearance.copyStream();
    appearance.getDict().replaceKey("/OC", layer);
  }
  appearance.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
  return appearance;
}

}  // namespace

PageWrap::PageWrap(QPDF& document)
    : pdf(document),
      bytesToScan(mostToScan),
      bytesToJoin(mostToJoin),
      partsLeft(mostParts) {}

void PageWrap::apply(const PageEntry& entry, const Effects& effects) {
  QPDFObjectHandle page = entry.page;
  QPDFObjectHandle resources = resourcesFor(entry);
  const PageShape shape = shapeOf(entry);
  const std::string placed = placement(shape, effects);
  Streams content = contentStreams(page);
  const bool patternsMove = !placed.empty() && hasPatterns(resources);
  if (!content.empty() && (patternsMove || !mayBeWrapped(content))) enclose(entry, shape, content, resources);

  std::string before = "q\n" + placed;
  std::string after = "\nQ\n";
  const std::string annotations = drawAnnotations(page, shape, resources);
  if (!annotations.empty()) after += "q\n" + placed + annotations + "Q\n";
  if (effects.negativeImage) {
    // Paper has no colour of its own that could be turned into its opposite.
    before.insert(0, "q 1 1 1 rg " + rectangle(shape.reach) + " f Q\n");
    after += negate(shape, resources);
    page.replaceKey("/Group", rgbGroup);
  }
  content.insert(content.begin(), sharedStream(before));
  content.push_back(sharedStream(after));
  page.replaceKey("/Contents", QPDFObjectHandle::newArray(content));
}

PageWrap::Streams PageWrap::contentStreams(QPDFObjectHandle page) {
  QPDFObjectHandle contents = page.getKey("/Contents");
  if (contents.isStream()) return {contents};
  Streams streams;
  if (contents.isArray()) {
    countParts(contents.getArrayNItems());
    for (QPDFObjectHandle item : contents.getArrayAsVector())
      if (item.isStream()) streams.push_back(item);
  }
  return streams;
}

bool PageWrap::mayBeWrapped(const Streams& streams) {
  if (streams.size() > 1) return decode(streams, scratch) && standsAlone(scratch);
  const auto [known, added] = wrappableByStream.try_emplace(streams.front().getObjGen(), false);
  if (added) known->second = decode(streams, scratch) && standsAlone(scratch);
  return known->second;
}

/// False when the content cannot be decoded, or is too much.
bool PageWrap::decode(const Streams& streams, std::string& content) {
  content.clear();
  bool complete = true;
  Collector collector(content, std::min(mostToScanOfOnePage, bytesToScan));
  for (QPDFObjectHandle stream : streams) {
    bool decoded = false;
    complete = stream.pipeStreamData(&collector, &decoded, 0, qpdf_dl_generalized, true) && decoded;
    if (!complete) break;
    content += '\n';  // The end of a stream ends a word.
  }
  bytesToScan -= std::min(bytesToScan, content.size());
  return complete;
}

/// The content as a form: the bytes of a single stream as they are, several streams joined. Null when they cannot be
/// joined.
QPDFObjectHandle PageWrap::asForm(const Streams& streams) {
  if (streams.size() == 1) {
    QPDFObjectHandle single = streams.front();
    return single.copyStream();
  }
  if (!decode(streams, scratch) || scratch.size() > bytesToJoin) return QPDFObjectHandle::newNull();
  bytesToJoin -= scratch.size();
  QPDFObjectHandle form = pdf.newStream(deflated(scratch));
  form.getDict().replaceKey("/Filter", QPDFObjectHandle::newName("/FlateDecode"));
  return form;
}

/// Puts the content into a form of its own, which nothing in it can get out of. Content that cannot be put there stays
/// as it is.
void PageWrap::enclose(const PageEntry& entry, const PageShape& shape, Streams& streams, QPDFObjectHandle& resources) {
  QPDFObjectHandle form = asForm(streams);
  if (form.isNull()) return;
  QPDFObjectHandle page = entry.page;
  QPDFObjectHandle dictionary = form.getDict();
  for (const char* key : {"/Matrix", "/Group", "/OC", "/Ref"}) dictionary.removeKey(key);
  const Box& reach = shape.reach;
  dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
  dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
  dictionary.replaceKey(
      "/BBox", QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(reach.x0, reach.y0, reach.x1, reach.y1)));
  dictionary.replaceKey("/Resources", resources);
  if (page.hasKey("/StructParents"))  // Leads from marked content to the document's structure.
    dictionary.replaceKey("/StructParents", page.getKey("/StructParents"));

  resources = QPDFObjectHandle::newDictionary();
  dictionaryIn(resources, "/XObject").replaceKey("/KilnPage", form);
  page.replaceKey("/Resources", resources);
  streams = {sharedStream("/KilnPage Do\n")};
}

/// Content that draws what the page's annotations print.
std::string PageWrap::drawAnnotations(QPDFObjectHandle page, const PageShape& shape, QPDFObjectHandle& resources) {
  QPDFObjectHandle annotations = page.getKey("/Annots");
  if (!annotations.isArray()) return {};
  countParts(annotations.getArrayNItems());
  std::string drawn;
  for (QPDFObjectHandle item : annotations.getArrayAsVector()) {
    if (!item.getKeyIfDict("/AP").isDictionary()) continue;
    QPDFAnnotationObjectHelper annotation(item);
    if (annotation.getSubtype() == "/Popup") continue;
    QPDFObjectHandle appearance = printedAppearance(annotation);
    if (appearance.isNull()) continue;
    QPDFObjectHandle forms = dictionaryIn(resources, "/XObject");
    std::string name;
    do name = "/KilnAnnot" + std::to_string(++namesMade);
    while (forms.hasKey(name));
    const std::string content = annotation.getPageContentForAppearance(name, shape.turn, an_print, an_hidden);
    if (content.empty()) continue;
    forms.replaceKey(name, appearance);
    drawn += content;
  }
  return drawn;
}

/// Content that turns everything under it into its opposite. It relies on the page being a group in RGB, where the
/// difference to white is the opposite of a colour whatever space the colour was given in.
std::string PageWrap::negate(const PageShape& shape, QPDFObjectHandle& resources) {
  if (!negativeState.isInitialized()) {
    rgbGroup = pdf.makeIndirectObject("<< /S /Transparency /CS /DeviceRGB /I true >>"_qpdf);
    negativeState = pdf.makeIndirectObject("<< /BM /Difference >>"_qpdf);
  }
  QPDFObjectHandle states = dictionaryIn(resources, "/ExtGState");
  while (states.hasKey(negativeName) && !states.getKey(negativeName).isSameObjectAs(negativeState))
    negativeName = "/KilnNegative" + std::to_string(++namesMade);
  states.replaceKey(negativeName, negativeState);
  return "q " + negativeName + " gs 1 1 1 rg " + rectangle(shape.reach) + " f Q\n";
}

QPDFObjectHandle PageWrap::sharedStream(const std::string& content) {
  QPDFObjectHandle& stream = streamsByContent[content];
  if (!stream.isInitialized()) stream = pdf.newStream(content);
  return stream;
}

void PageWrap::countParts(int parts) {
  if (parts > partsLeft) throw std::length_error("its pages consist of too many parts");
  partsLeft -= parts;
}

}  // namespace Press
