// One watermark file: a document of records, read and replaced whole through the host.
#pragma once

#include "effect/watermark/record.h"

#include <string>
#include <vector>

namespace Effect {

// Its name in every folder that has one.
inline constexpr Name watermarkFileName = u"ZVeffect.xml";

class SeenStore;

// Remembers what this process last saw in the file, so as to tell what others have written since.
class WatermarkFile {
 public:
  // `lender` outlives the file.
  WatermarkFile(Kiln::Host& lender, Kiln::SmartPtr<Kiln::Services::Path> filePath);
  WatermarkFile(const WatermarkFile&) = delete;
  WatermarkFile& operator=(const WatermarkFile&) = delete;
  ~WatermarkFile();

  // The root of the records; empty when there is no file. Throws Exception when it cannot be read to its end, or holds
  // far more than anybody has.
  Node read();

  // The same when the file is there and is not as it was last read or written here; else empty. Throws as read.
  Node readIfChanged();

  // Makes the file one that was neither read nor written here yet.
  void forget();

  // Makes the document, or the bytes of a resource, the content of the file. Throws Exception.
  void write(const Node& root);
  void copyFrom(Name resource);

  // Copies a file that cannot be read beside itself, under the first name ZVeffect.damaged-N.xml that is free or holds
  // the same bytes already; gives the copy's path. Throws Exception.
  Kiln::SmartPtr<Kiln::Services::Path> setAside();

  // From now on the file is neither read nor written: whoever tries gets an Exception with this sentence.
  void block(std::string sentence) { blockedBecause = std::move(sentence); }
  void refuseIfBlocked() const;

 private:
  Kiln::SmartPtr<SeenStore> newStore() const;
  Node readDocument();
  bool holdsTheSame(Kiln::Services::Path& other) const;

  Kiln::Host& host;
  Kiln::SmartPtr<Kiln::Services::Path> path;
  Kiln::SmartPtr<SeenStore> store;
  std::string blockedBecause;  // UTF-8; empty when it is not
};

// The records below a root in the order of their ids' 16-bit units; of one id in the order of the file.
std::vector<Node> recordsOf(Kiln::Dom::INode& root);

}  // namespace Effect
