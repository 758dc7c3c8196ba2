#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "press/document.h"
#include "press/effects.h"
#include "press/page_shape.h"

namespace Press {

/// Puts effects around the content of a document's pages. The content itself stays as it is: each effect is content
/// before and after it, and what is the same on many pages is stored once.
class PageWrap {
 public:
  /// The document must outlive this object.
  explicit PageWrap(QPDF& document);

  /// Changes the dictionary `entry.page` so that the page prints with these effects. Annotations that print become part
  /// of the page; the annotations themselves are left as they are. Call once for a page.
  void apply(const PageEntry& entry, const Effects& effects);

 private:
  using Streams = std::vector<QPDFObjectHandle>;

  Streams contentStreams(QPDFObjectHandle page);
  bool mayBeWrapped(const Streams& streams);
  bool decode(const Streams& streams, std::string& content);
  QPDFObjectHandle asForm(const Streams& streams);
  void enclose(const PageEntry& entry, const PageShape& shape, Streams& streams, QPDFObjectHandle& resources);
  std::string drawAnnotations(QPDFObjectHandle page, const PageShape& shape, QPDFObjectHandle& resources);
  std::string negate(const PageShape& shape, QPDFObjectHandle& resources);
  QPDFObjectHandle sharedStream(const std::string& content);
  void countParts(int parts);

  QPDF& pdf;
  QPDFObjectHandle rgbGroup;
  QPDFObjectHandle negativeState;
  std::string negativeName = "/KilnNegative";
  std::unordered_map<std::string, QPDFObjectHandle> streamsByContent;
  std::map<QPDFObjGen, bool> wrappableByStream;
  std::string scratch;  ///< Decoded content; a member so that its memory serves page after page.
  std::size_t bytesToScan;
  std::size_t bytesToJoin;
  int partsLeft;
  int namesMade = 0;
};

}  // namespace Press
