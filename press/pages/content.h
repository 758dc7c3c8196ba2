#pragma once

#include "press/pages/shape.h"
#include "press/pdf/document.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace Press {

using Streams = std::vector<QPDFObjectHandle>;

// Reads and adds page content within limits, since a few kilobytes can decompress to terabytes. Content beyond the
// limits is printed without being parsed, or rejected with an exception.
class PageContent {
 public:
  // The document must outlive this object.
  explicit PageContent(QPDF& document);

  Streams streamsOf(QPDFObjectHandle page);

  // Whether other content may precede and follow this content (see content_scan.h).
  bool standsAlone(const Streams& streams);

  // The page's content as a form clipped to `box`, which isolates its graphics state. Null when it cannot be
  // converted.
  QPDFObjectHandle asForm(const Box& box, const Streams& streams, QPDFObjectHandle resources);

  // A form with new content.
  QPDFObjectHandle newForm(const Box& box, const std::string& content, QPDFObjectHandle resources);

  // A stream with this content; equal content shares one stream.
  QPDFObjectHandle shared(const std::string& content);

  // Counts against the limit of page parts; throws when it is exceeded.
  void countParts(int parts);

 private:
  enum class Decoded { none, untilItIsDamaged, whole };

  Decoded decode(const Streams& streams, std::string& content);
  QPDFObjectHandle inOneStream(const Streams& streams);

  QPDF& pdf;
  std::unordered_map<std::string, QPDFObjectHandle> streamsByContent;
  std::map<QPDFObjGen, bool> standAloneByStream;
  std::string scratch;  // decoded content; a member to reuse its memory
  std::size_t bytesToScan;
  std::size_t bytesToJoin;
  int partsLeft;
};

// A dictionary inside another one, created when missing.
QPDFObjectHandle dictionaryIn(QPDFObjectHandle parent, const std::string& key);

}  // namespace Press
