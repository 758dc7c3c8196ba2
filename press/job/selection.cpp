#include "press/job/selection.h"

#include "press/pdf/qpdf.h"

#include <exception>
#include <set>

namespace Press {
namespace {

void setInherited(QPDFObjectHandle page, const char* key, QPDFObjectHandle value) {
  if (value.isInitialized() && !value.isNull()) page.replaceKey(key, value);
}

// Rebuilds the page tree from the listed pages, with inherited attributes resolved.
void setListedPages(Document& document) {
  std::vector<QPDFObjectHandle> pages;
  for (const PageEntry& entry : document.pages) {
    setInherited(entry.page, "/Resources", entry.resources);
    setInherited(entry.page, "/MediaBox", entry.mediaBox);
    setInherited(entry.page, "/CropBox", entry.cropBox);
    setInherited(entry.page, "/Rotate", entry.rotate);
    pages.push_back(entry.page);
  }
  setPages(*document.pdf, document.pdf->getTrailer().getKey("/Root"), pages);
}

// The labels of the pages with these indexes, from 0, as the labels of a new document. Null when there are none, or
// they cannot be read.
QPDFObjectHandle labelsOf(QPDF& pdf, const std::vector<std::size_t>& pages) {
  try {
    QPDFPageLabelDocumentHelper labels(pdf);
    if (!labels.hasPageLabels()) return QPDFObjectHandle::newNull();
    std::vector<QPDFObjectHandle> entries;
    long long place = 0;
    for (const std::size_t page : pages) {
      const auto number = static_cast<long long>(page);
      labels.getLabelsForPageRange(number, number, place++, entries);
    }
    QPDFObjectHandle kept = QPDFObjectHandle::newDictionary();
    kept.replaceKey("/Nums", QPDFObjectHandle::newArray(entries));
    return kept;
  } catch (const std::exception&) {
    return QPDFObjectHandle::newNull();
  }
}

}  // namespace

void setPages(QPDF& pdf, QPDFObjectHandle catalog, const std::vector<QPDFObjectHandle>& pages) {
  QPDFObjectHandle tree = pdf.makeIndirectObject(QPDFObjectHandle::parse("<< /Type /Pages >>"));
  std::vector<QPDFObjectHandle> kids;
  for (QPDFObjectHandle page : pages) {
    page.replaceKey("/Parent", tree);
    kids.push_back(page.isIndirect() ? page : pdf.makeIndirectObject(page));
  }
  tree.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(kids.size())));
  tree.replaceKey("/Kids", QPDFObjectHandle::newArray(kids));
  catalog.replaceKey("/Pages", tree);
}

bool keepPages(Document& document, const PageRule& rule) {
  QPDF& pdf = *document.pdf;
  std::vector<PageEntry> kept;
  std::vector<std::size_t> keptNumbers;
  std::set<QPDFObjGen> keptObjects, leftOut;
  for (std::size_t index = 0; index < document.pages.size(); ++index) {
    const PageEntry& entry = document.pages[index];
    const bool isNamed = rule.has(static_cast<int>(index + 1));
    if (entry.page.isIndirect()) (isNamed ? keptObjects : leftOut).insert(entry.page.getObjGen());
    if (!isNamed) continue;
    kept.push_back(entry);
    keptNumbers.push_back(index);
  }
  if (kept.empty()) return false;
  if (kept.size() == document.pages.size()) return true;

  document.pages = std::move(kept);
  setListedPages(document);
  QPDFObjectHandle catalog = pdf.getTrailer().getKey("/Root");
  catalog.replaceKey("/PageLabels", labelsOf(pdf, keptNumbers));
  // Links and outlines would keep the removed pages and the old page tree in the file.
  for (const QPDFObjGen& page : leftOut)
    if (!keptObjects.contains(page)) pdf.replaceObject(page, QPDFObjectHandle::newNull());
  return true;
}

void separatePlaces(Document& document) {
  std::set<QPDFObjGen> seen;
  bool areSeparate = true;
  for (PageEntry& entry : document.pages) {
    if (!entry.page.isIndirect() || seen.insert(entry.page.getObjGen()).second) continue;
    entry.page = document.pdf->makeIndirectObject(entry.page.shallowCopy());
    areSeparate = false;
  }
  if (!areSeparate) setListedPages(document);
}

}  // namespace Press
