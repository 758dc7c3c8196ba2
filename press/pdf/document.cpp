#include "press/pdf/document.h"

#include "files/system_reason.h"
#include "formats/sentences.h"
#include "press/error.h"
#include "press/pdf/input_file.h"
#include "press/pdf/qpdf.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Press {
namespace {

namespace fs = std::filesystem;

void refuseWhatIsNoPdf(const fs::path& file) {
  std::error_code code;
  const fs::file_status status = fs::status(file, code);
  if (!fs::status_known(status))
    throw Error(Formats::sentence("{1} cannot be examined ({2}): see that it can be read.", quoted(file),
                                  Files::systemReason(code)));
  if (!fs::exists(status))
    throw Error(Formats::sentence("{1} does not exist: check its name and its folder.", quoted(file)));
  if (!fs::is_regular_file(status))
    throw Error(
        Formats::sentence("{1} is not an ordinary file: name the PDF file that is to be printed.", quoted(file)));
  std::ifstream stream(file, std::ios::binary);
  if (!stream)
    throw Error(Formats::sentence("{1} cannot be read: ask its owner for permission to read it.", quoted(file)));
  std::string start(1024, '\0');  // readers skip leading junk before the PDF header
  stream.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<std::size_t>(stream.gcount()));
  if (start.find("%PDF-") == std::string::npos)
    throw Error(
        Formats::sentence("{1} is not a PDF file: save or export the document as PDF and print that.", quoted(file)));
}

// The inherited attributes of a node, and its kids still to be visited.
struct Level {
  PageEntry inherited;
  std::vector<QPDFObjectHandle> kids;
  std::size_t next = 0;
};

// Walks the page tree iteratively, visiting each node once, so that loops and deep nesting in hostile files are
// harmless.
class PageWalk {
 public:
  explicit PageWalk(QPDF& document) : pdf(document) {}

  std::vector<PageEntry> run() {
    QPDFObjectHandle root = pdf.getTrailer().getKeyIfDict("/Root").getKeyIfDict("/Pages");
    if (root.isDictionary()) visit(root, {});
    while (!levels.empty()) {
      Level& level = levels.back();
      if (level.next == level.kids.size()) {
        levels.pop_back();
        continue;
      }
      QPDFObjectHandle kid = level.kids[level.next++];
      if (kid.isDictionary())
        visit(kid, level.inherited);
      else if (!kid.isNull() || pdf.anyWarnings())  // a valid file may have a null reference where a page was deleted
        throw std::runtime_error(Formats::sentence("page {1} cannot be read", pages.size() + 1));
    }
    return std::move(pages);
  }

 private:
  // `entry` by value: entering a node may reallocate the level that it comes from.
  void visit(QPDFObjectHandle node, PageEntry entry) {
    entry.page = node;
    QPDFObjectHandle kids = node.getKey("/Kids");
    inherit(node, "/Resources", entry.resources);
    inherit(node, "/MediaBox", entry.mediaBox);
    inherit(node, "/CropBox", entry.cropBox);
    inherit(node, "/Rotate", entry.rotate);
    if (!kids.isArray()) {
      pages.push_back(std::move(entry));
      return;
    }
    if (node.isIndirect() && !seen.insert(node.getObjGen()).second) return;
    if (entry.resources.isDictionary() && !entry.resources.isIndirect()) {
      // Many pages will refer to the resources; an indirect object is stored once.
      entry.resources = pdf.makeIndirectObject(entry.resources);
      node.replaceKey("/Resources", entry.resources);
    }
    levels.push_back({std::move(entry), kids.getArrayAsVector()});
  }

  static void inherit(QPDFObjectHandle& node, const char* key, QPDFObjectHandle& value) {
    QPDFObjectHandle own = node.getKey(key);
    if (!own.isNull() || !value.isInitialized()) value = own;
  }

  QPDF& pdf;
  std::vector<PageEntry> pages;
  std::vector<Level> levels;
  std::set<QPDFObjGen> seen;
};

// The library writes with the key length in the file, but reads with the correct one: fix the file's entry.
void tellLengthOfKey(QPDF& pdf) {
  QPDFObjectHandle encryption = pdf.getTrailer().getKey("/Encrypt");
  if (!pdf.isEncrypted() || !encryption.isDictionary()) return;
  const auto bits = static_cast<long long>(8 * pdf.getEncryptionKey().size());
  encryption.replaceKey("/Length", QPDFObjectHandle::newInteger(bits));
}

std::unique_ptr<QPDF> readWith(const fs::path& file, const std::string& password) {
  auto pdf = std::make_unique<QPDF>();
  pdf->setSuppressWarnings(true);
  pdf->processInputSource(std::make_shared<InputFile>(file), password.c_str());
  return pdf;
}

// Null when that is not the password.
std::unique_ptr<QPDF> readIfOpened(const fs::path& file, const std::string& password) {
  try {
    return readWith(file, password);
  } catch (const QPDFExc& problem) {
    if (problem.getErrorCode() != qpdf_e_password) throw;
    return nullptr;
  }
}

// Reads with no password where that is enough: then it stays encrypted, with the permissions that its author gives
// everyone. Older files have their passwords in other encodings than UTF-8.
std::unique_ptr<QPDF> unlock(const JobFile& job, bool& isUnlocked) {
  isUnlocked = false;
  auto open = readIfOpened(job.file, {});
  if (job.password.empty()) {
    if (!open)
      throw PasswordNeeded(
          Formats::sentence("{1} needs a password: save a copy without protection and print that.", quoted(job.file)),
          false);
    return open;
  }
  if (open && (!open->isEncrypted() || open->allowPrintLowRes())) return open;
  for (const std::string& password : QUtil::possible_repaired_encodings(job.password)) {
    auto unlocked = readIfOpened(job.file, password);
    if (!unlocked || (open && !unlocked->ownerPasswordMatched())) continue;
    isUnlocked = true;
    return unlocked;
  }
  if (!open)
    throw PasswordNeeded(Formats::sentence("{1} does not open with this password: check it.", quoted(job.file)), true);
  return open;
}

Document open(const JobFile& job) {
  const fs::path& file = job.file;
  Document document;
  document.pdf = unlock(job, document.isUnlocked);
  QPDF& pdf = *document.pdf;
  if (pdf.isEncrypted() && !pdf.allowPrintLowRes() && !(document.isUnlocked && pdf.ownerPasswordMatched()))
    throw Error(Formats::sentence("{1} may not be printed, its author says: ask for a copy that may.", quoted(file)));
  tellLengthOfKey(pdf);
  document.pages = PageWalk(pdf).run();
  if (document.pages.empty())
    throw Error(
        Formats::sentence("{1} has no pages: save or export the document as PDF again and print that.", quoted(file)));
  return document;
}

}  // namespace

void demandPassword(const JobFile& job) {
  try {
    bool isUnlocked = false;
    unlock(job, isUnlocked);
  } catch (const PasswordNeeded&) {
    throw;
  } catch (const std::exception&) {
    // Whoever opens it reports it.
  }
}

Document openDocument(const JobFile& job) {
  const fs::path& file = job.file;
  refuseWhatIsNoPdf(file);
  try {
    return open(job);
  } catch (const Error&) {
    throw;
  } catch (const QPDFExc& problem) {
    throw Error(Formats::sentence("{1} is damaged ({2}): save or export the document as PDF again and print that.",
                                  quoted(file), problem.getMessageDetail()));
  } catch (const std::exception& problem) {
    throw Error(Formats::sentence("{1} is damaged ({2}): save or export the document as PDF again and print that.",
                                  quoted(file), problem.what()));
  }
}

}  // namespace Press
