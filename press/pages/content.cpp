#include "press/pages/content.h"

#include "press/pages/content_scan.h"
#include "press/pdf/qpdf.h"

#include <algorithm>
#include <stdexcept>

namespace Press {
namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr std::size_t mostToScanOfOnePage = 64 * mebibyte;
constexpr std::size_t mostToScan = 512 * mebibyte;
constexpr std::size_t mostToJoin = 256 * mebibyte;
constexpr int mostParts = 4'000'000;

// Collects decoded data up to a limit.
class Collector : public Pipeline {
 public:
  Collector(std::string& collected, std::size_t most)
      : Pipeline("page content", nullptr),
        text(collected),
        limit(most) {}

  void write(const unsigned char* data, std::size_t size) override {
    overflowed = overflowed || size > limit - text.size();
    if (overflowed) throw std::length_error("too much content");
    text.append(reinterpret_cast<const char*>(data), size);
  }
  void finish() override {}

  bool hadTooMuch() const { return overflowed; }

 private:
  std::string& text;
  std::size_t limit;
  bool overflowed = false;
};

void makeForm(QPDFObjectHandle stream, const Box& box, QPDFObjectHandle resources) {
  QPDFObjectHandle dictionary = stream.getDict();
  dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
  dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
  dictionary.replaceKey("/BBox",
                        QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(box.x0, box.y0, box.x1, box.y1)));
  dictionary.replaceKey("/Resources", resources);
}

QPDFObjectHandle compressedStream(QPDF& pdf, const std::string& data) {
  std::string compressed;
  Pl_String sink("deflated", nullptr, compressed);
  Pl_Flate deflate("deflate", &sink, Pl_Flate::a_deflate);
  deflate.writeString(data);
  deflate.finish();
  QPDFObjectHandle stream = pdf.newStream(compressed);
  stream.getDict().replaceKey("/Filter", QPDFObjectHandle::newName("/FlateDecode"));
  return stream;
}

}  // namespace

QPDFObjectHandle dictionaryIn(QPDFObjectHandle parent, const std::string& key) {
  QPDFObjectHandle dictionary = parent.getKey(key);
  return dictionary.isDictionary() ? dictionary : parent.replaceKeyAndGetNew(key, QPDFObjectHandle::newDictionary());
}

PageContent::PageContent(QPDF& document)
    : pdf(document),
      bytesToScan(mostToScan),
      bytesToJoin(mostToJoin),
      partsLeft(mostParts) {}

Streams PageContent::streamsOf(QPDFObjectHandle page) {
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

bool PageContent::standsAlone(const Streams& streams) {
  if (streams.empty()) return true;
  if (streams.size() > 1) return decode(streams, scratch) == Decoded::whole && Press::standsAlone(scratch);
  const auto [known, added] = standAloneByStream.try_emplace(streams.front().getObjGen(), false);
  if (added) known->second = decode(streams, scratch) == Decoded::whole && Press::standsAlone(scratch);
  return known->second;
}

// Returns how much of the content could be decoded.
PageContent::Decoded PageContent::decode(const Streams& streams, std::string& content) {
  content.clear();
  Decoded result = Decoded::whole;
  Collector collector(content, std::min(mostToScanOfOnePage, bytesToScan));
  for (QPDFObjectHandle stream : streams) {
    const bool isKnown = stream.pipeStreamData(nullptr, nullptr, 0, qpdf_dl_specialized, true);
    const bool isSound = isKnown && stream.pipeStreamData(&collector, nullptr, 0, qpdf_dl_specialized, true);
    if (!isKnown || collector.hadTooMuch()) result = Decoded::none;
    if (result == Decoded::none) break;
    if (!isSound) result = Decoded::untilItIsDamaged;
    content += '\n';  // a stream ends a token
  }
  bytesToScan -= std::min(bytesToScan, content.size());
  return result;
}

// A single stream unchanged, or several streams joined, up to any damage. Null when they cannot be joined.
QPDFObjectHandle PageContent::inOneStream(const Streams& streams) {
  if (streams.size() == 1) {
    QPDFObjectHandle single = streams.front();
    return single.copyStream();
  }
  if (decode(streams, scratch) == Decoded::none || scratch.size() > bytesToJoin) return QPDFObjectHandle::newNull();
  bytesToJoin -= scratch.size();
  return compressedStream(pdf, scratch);
}

QPDFObjectHandle PageContent::asForm(const Box& box, const Streams& streams, QPDFObjectHandle resources) {
  QPDFObjectHandle form = inOneStream(streams);
  if (form.isNull()) return form;
  QPDFObjectHandle dictionary = form.getDict();
  for (const char* key : {"/Matrix", "/Group", "/OC", "/Ref"}) dictionary.removeKey(key);
  makeForm(form, box, resources);
  return form;
}

QPDFObjectHandle PageContent::newForm(const Box& box, const std::string& content, QPDFObjectHandle resources) {
  QPDFObjectHandle form = compressedStream(pdf, content);
  makeForm(form, box, resources);
  return form;
}

QPDFObjectHandle PageContent::shared(const std::string& content) {
  QPDFObjectHandle& stream = streamsByContent[content];
  if (!stream.isInitialized()) stream = pdf.newStream(content);
  return stream;
}

void PageContent::countParts(int parts) {
  if (parts > partsLeft) throw std::length_error("its pages consist of too many parts");
  partsLeft -= parts;
}

}  // namespace Press
