#include "press/job/print.h"

#include "files/disk.h"
#include "files/system_reason.h"
#include "files/whole_file.h"
#include "formats/sentences.h"
#include "press/job/overlay_words.h"
#include "press/job/selection.h"
#include "press/job/write_behind.h"
#include "press/pages/annotations.h"
#include "press/pages/wrap.h"
#include "press/pdf/document.h"
#include "press/pdf/form_fields.h"
#include "press/pdf/qpdf.h"

#include <algorithm>
#include <exception>
#include <initializer_list>
#include <set>
#include <system_error>

namespace Press {
namespace {

namespace fs = std::filesystem;

// The library's output. The library swallows some pipeline exceptions, so this throws none.
class FilePipeline : public Pipeline {
 public:
  explicit FilePipeline(WriteBehind& file) : Pipeline("printed file", nullptr), out(file) {}

  void write(const unsigned char* data, std::size_t size) override {
    out.write(reinterpret_cast<const char*>(data), size);
  }
  void finish() override {}

 private:
  WriteBehind& out;
};

// Reports progress to the caller. Applying the effects is the first half of the work, writing the file the second.
class Steps : public QPDFWriter::ProgressReporter {
 public:
  Steps(const Progress& function, int pages) : progress(function), total(pages) {}

  void pageDone(int count) { report(count / 2); }
  void reportProgress(int percent) override {
    report(static_cast<int>(total / 2 + static_cast<long long>(total - total / 2) * percent / 100));
  }

 private:
  void report(int done) const {
    if (progress && !progress(done, total)) throw Stopped();
  }

  const Progress& progress;
  int total;
};

Error unwritable(const fs::path& out, std::error_code reason) {
  return Error(
      Formats::sentence("{1} cannot be written ({2}): choose a folder that exists, may be written to and has room.",
                        quoted(out), Files::systemReason(reason)));
}

// Converts the current exception of a failed print into an Error. Call in a catch block.
[[noreturn]] void sayWhyNot(const fs::path& in, const fs::path& out) {
  try {
    throw;
  } catch (const Error&) {
    throw;
  } catch (const Stopped&) {
    throw;
  } catch (const Files::DiskError& problem) {
    if (!problem.code()) throw Error(problem.what());  // a sentence of its own
    throw unwritable(out, problem.code());
  } catch (const std::system_error& problem) {
    throw unwritable(out, problem.code());
  } catch (const std::exception& problem) {
    throw Error(
        Formats::sentence("{1} cannot be printed ({2}): save or export the document as PDF again and print that.",
                          quoted(in), problem.what()));
  }
}

void write(const Document& document, Pipeline& out, const Marks& marks, bool blends, std::shared_ptr<Steps> steps) {
  QPDFWriter writer(*document.pdf);
  if (document.isUnlocked) writer.setPreserveEncryption(false);
  writer.setOutputPipeline(&out);
  writer.setStreamDataMode(qpdf_s_preserve);
  if (blends) writer.setMinimumPDFVersion("1.4");  // the first version with transparency
  if (!marks.pdfVersion().empty()) writer.setMinimumPDFVersion(marks.pdfVersion());
  if (steps) writer.registerProgressReporter(std::move(steps));
  writer.write();
}

void wrapPages(Document& document, PageWrap& wrap, Steps& steps) {
  std::set<QPDFObjGen> seen;
  std::vector<QPDFObjectHandle> wrapped;
  int done = 0;
  for (const PageEntry& entry : document.pages) {
    ++done;
    if (!entry.page.isIndirect() || seen.insert(entry.page.getObjGen()).second) {
      wrap.apply(entry, {Turn::Kind::page, done});
      wrapped.push_back(entry.page);
    }
    steps.pageDone(done);
  }
  // At the end, because pages may share annotations.
  for (const QPDFObjectHandle& page : wrapped) hideAnnotations(page);
}

// The pages of the sheet that starts with page `number`.
std::vector<PageEntry> pagesFrom(const Document& document, int number, int count) {
  const auto first = document.pages.begin() + (number - 1);
  return {first, first + std::min<std::ptrdiff_t>(count, document.pages.end() - first)};
}

void putPagesOnSheets(Document& document, PageWrap& wrap, int pagesOnSheet, Steps& steps) {
  std::vector<QPDFObjectHandle> sheets;
  const int count = static_cast<int>(document.pages.size());
  for (int number = 1; number <= count; number += pagesOnSheet) {
    sheets.push_back(wrap.sheetOf(pagesFrom(document, number, pagesOnSheet), number));
    steps.pageDone(std::min(number + pagesOnSheet - 1, count));
  }
  QPDFObjectHandle catalog = document.pdf->getTrailer().getKey("/Root");
  setPages(*document.pdf, catalog, sheets);
  // Entries that refer to the removed pages.
  for (const char* key : {"/AcroForm", "/Dests", "/Names", "/OpenAction", "/Outlines", "/PageLabels", "/PageMode",
                          "/StructTreeRoot", "/MarkInfo", "/Threads"})
    catalog.removeKey(key);
}

// Clears the document's page list, which is no longer needed, to free memory. Returns sentences about deviations from
// the requested effects.
std::vector<std::string> putEffectsOn(Document& document, Marks& marks, const Effects& effects, Steps& steps) {
  PageWrap wrap(*document.pdf, marks);
  wrap.prepare(effects);
  if (effects.any()) drawWaitingFields(document);
  if (effects.pagesOnSheet == 1 && effects.dependOnPlace()) separatePlaces(document);
  if (effects.pagesOnSheet > 1)
    putPagesOnSheets(document, wrap, effects.pagesOnSheet, steps);
  else if (effects.any())
    wrapPages(document, wrap, steps);
  document.pages = std::vector<PageEntry>();  // clear() would keep the memory
  std::vector<std::string> notes = overlayNotes(effects);
  notes.insert(notes.end(), marks.notes().begin(), marks.notes().end());
  for (std::string& note : wrap.notes()) notes.push_back(std::move(note));
  return notes;
}

std::vector<std::string> printOpened(Document& document, Files::PendingFile& file, const Effects& effects,
                                     const Progress& progress) {
  const auto steps = std::make_shared<Steps>(progress, static_cast<int>(document.pages.size()));
  Marks marks(*document.pdf);
  const std::vector<std::string> notes = putEffectsOn(document, marks, effects, *steps);
  WriteBehind out(file);
  FilePipeline pipeline(out);
  write(document, pipeline, marks, effects.anyPaint(), steps);
  out.complete();
  return notes;
}

// A shallow copy of a dictionary, with shallow copies of the dictionaries in `keys`.
QPDFObjectHandle copyWith(QPDFObjectHandle dictionary, std::initializer_list<const char*> keys) {
  if (!dictionary.isInitialized() || !dictionary.isDictionary()) return QPDFObjectHandle::newDictionary();
  QPDFObjectHandle copy = dictionary.shallowCopy();
  for (const char* key : keys) {
    QPDFObjectHandle inner = copy.getKey(key);
    if (inner.isDictionary()) copy.replaceKey(key, inner.shallowCopy());
  }
  return copy;
}

// A standalone page without references to other pages: only visible parts, with inherited attributes. Effects on it do
// not modify the document.
PageEntry alone(const PageEntry& entry) {
  PageEntry copy = entry;
  QPDFObjectHandle page = entry.page;
  copy.page = QPDFObjectHandle::newDictionary();
  copy.page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
  for (const char* key : {"/Annots", "/Contents", "/Group", "/UserUnit"})
    if (page.hasKey(key)) copy.page.replaceKey(key, page.getKey(key));
  copy.resources = copyWith(entry.resources, {"/XObject", "/ExtGState"});
  copy.page.replaceKey("/Resources", copy.resources);
  copy.page.replaceKey("/MediaBox", entry.mediaBox);
  copy.page.replaceKey("/CropBox", entry.cropBox);
  copy.page.replaceKey("/Rotate", entry.rotate);
  return copy;
}

}  // namespace

std::vector<std::string> printPdf(const JobFile& in, const fs::path& out, const Effects& effects,
                                  const Progress& progress, const PageRule& pages) {
  std::error_code problem;
  if (fs::equivalent(in.file, out, problem))
    throw Error(Formats::sentence("{1} is the job itself: choose another file to print into.", quoted(out)));
  if (!effects.refusal.empty()) throw Error(effects.refusal);
  Document document = openDocument(in);
  // Files that cannot be compared may be the same.
  if (problem && problem != std::errc::no_such_file_or_directory) throw unwritable(out, problem);
  try {
    if (!keepPages(document, pages))
      throw Error(Formats::sentence("{1} has none of the chosen pages: choose from its {2}.", quoted(in.file),
                                    document.pages.size()));
    const fs::path target = Files::linkTarget(out);
    Files::sweepBeside(Files::realDisk(), target);
    Files::PendingFile file(Files::realDisk(), target);
    std::vector<std::string> notes = printOpened(document, file, effects, progress);
    file.finish();
    file.putInPlace();
    return notes;
  } catch (...) {
    sayWhyNot(in.file, out);
  }
}

struct Job::State {
  fs::path file;
  Document document;
  Marks marks;
  PageWrap wrap;
  QPDFObjectHandle catalog;  // refers to the page being printed

  explicit State(const JobFile& job)
      : file(job.file),
        document(openDocument(job)),
        marks(*document.pdf),
        wrap(*document.pdf, marks),
        catalog(document.pdf->makeIndirectObject(QPDFObjectHandle::newDictionary())) {
    drawWaitingFields(document);
    QPDFObjectHandle trailer = document.pdf->getTrailer();
    catalog.replaceKey("/Type", QPDFObjectHandle::newName("/Catalog"));
    const QPDFObjectHandle layers = trailer.getKeyIfDict("/Root").getKeyIfDict("/OCProperties");
    catalog.replaceKey("/OCProperties", layers);  // layer visibility
    trailer.replaceKey("/Root", catalog);
    trailer.removeKey("/Info");
  }
};

Job::Job(const JobFile& file) : state(std::make_unique<State>(file)) {}
Job::~Job() = default;
Job::Job(Job&&) noexcept = default;
Job& Job::operator=(Job&&) noexcept = default;

int Job::pageCount() const { return static_cast<int>(state->document.pages.size()); }

const std::vector<std::string>& Job::notes() const { return state->marks.notes(); }

std::string Job::printPage(int page, const Effects& effects) {
  if (page < 1 || page > pageCount())
    throw Error(
        Formats::sentence("{1} has no page {2}: choose one from 1 to {3}.", quoted(state->file), page, pageCount()));
  if (!effects.refusal.empty()) throw Error(effects.refusal);
  QPDF& pdf = *state->document.pdf;
  PageWrap& wrap = state->wrap;
  try {
    wrap.prepare(effects);
    std::vector<PageEntry> pages;
    const int first = page - (page - 1) % effects.pagesOnSheet;
    for (const PageEntry& entry : pagesFrom(state->document, first, effects.pagesOnSheet))
      pages.push_back(alone(entry));
    QPDFObjectHandle sheet = pages.front().page;
    if (effects.pagesOnSheet > 1)
      sheet = wrap.sheetOf(pages, first);
    else
      wrap.apply(pages.front(), {Turn::Kind::page, page});
    sheet.removeKey("/Annots");
    setPages(pdf, state->catalog, {sheet});
    std::string bytes;
    Pl_String out("printed page", nullptr, bytes);
    write(state->document, out, state->marks, effects.anyPaint(), nullptr);
    return bytes;
  } catch (...) {
    sayWhyNot(state->file, {});
  }
}

std::string printPage(const JobFile& in, int page, const Effects& effects) { return Job(in).printPage(page, effects); }

}  // namespace Press
