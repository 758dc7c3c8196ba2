#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "press/document.h"
#include "press/page_shape.h"

namespace Press {

using Streams = std::vector<QPDFObjectHandle>;

/// Reads and adds page content, within bounds on what a document may cost: a few kilobytes can describe terabytes of
/// content. What goes beyond them is still printed, by means that need not look into it, or refused with an exception.
class PageContent {
 public:
  /// The document must outlive this object.
  explicit PageContent(QPDF& document);

  Streams streamsOf(QPDFObjectHandle page);

  /// Whether other content may be put before and after this content: it leaves everything as it found it.
  bool standsAlone(const Streams& streams);

  /// The page's content as a form of its own, which nothing in it can get out of; `box` cuts it. Null when the content
  /// cannot be put into one.
  QPDFObjectHandle asForm(const Box& box, const Streams& streams, QPDFObjectHandle resources);

  /// A form of new content.
  QPDFObjectHandle newForm(const Box& box, const std::string& content, QPDFObjectHandle resources);

  /// A stream with this content, the same one each time.
  QPDFObjectHandle shared(const std::string& content);

  /// Counts towards the parts that pages may consist of.
  void countParts(int parts);

 private:
  enum class Decoded { none, untilItIsDamaged, whole };

  Decoded decode(const Streams& streams, std::string& content);
  QPDFObjectHandle inOneStream(const Streams& streams);

  QPDF& pdf;
  std::unordered_map<std::string, QPDFObjectHandle> streamsByContent;
  std::map<QPDFObjGen, bool> standAloneByStream;
  std::string scratch;  ///< Decoded content; a member so that its memory serves page after page.
  std::size_t bytesToScan;
  std::size_t bytesToJoin;
  int partsLeft;
};

/// A dictionary inside another one, made when it is not there.
QPDFObjectHandle dictionaryIn(QPDFObjectHandle parent, const std::string& key);

}  // namespace Press
