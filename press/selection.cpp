#include "press/selection.h"

#include <set>

namespace Press {

namespace {

void setInherited(QPDFObjectHandle page, const char* key, QPDFObjectHandle value) {
  if (value.isInitialized() && !value.isNull()) page.replaceKey(key, value);
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
  std::set<QPDFObjGen> keptObjects, leftOut;
  for (std::size_t index = 0; index < document.pages.size(); ++index) {
    const PageEntry& entry = document.pages[index];
    const bool isNamed = rule.has(static_cast<int>(index + 1));
    if (entry.page.isIndirect()) (isNamed ? keptObjects : leftOut).insert(entry.page.getObjGen());
    if (isNamed) kept.push_back(entry);
  }
  if (kept.empty()) return false;
  if (kept.size() == document.pages.size()) return true;

  std::vector<QPDFObjectHandle> pages;
  for (PageEntry& entry : kept) {
    setInherited(entry.page, "/Resources", entry.resources);
    setInherited(entry.page, "/MediaBox", entry.mediaBox);
    setInherited(entry.page, "/CropBox", entry.cropBox);
    setInherited(entry.page, "/Rotate", entry.rotate);
    pages.push_back(entry.page);
  }
  QPDFObjectHandle catalog = pdf.getTrailer().getKey("/Root");
  setPages(pdf, catalog, pages);
  catalog.removeKey("/PageLabels");
  // Links and outlines would bring the left out pages back into the file, and their whole tree with them.
  for (const QPDFObjGen& page : leftOut)
    if (keptObjects.count(page) == 0) pdf.replaceObject(page, QPDFObjectHandle::newNull());
  document.pages = std::move(kept);
  return true;
}

}  // namespace Press
