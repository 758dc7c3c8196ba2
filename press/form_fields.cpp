#include "press/form_fields.h"

#include <qpdf/QPDFAcroFormDocumentHelper.hh>

namespace Press {

namespace {

constexpr long long mostAnnotations = 1'000'000;  // The library looks at each on each page that names it.

long long countAnnotations(const Document& document) {
  long long count = 0;
  for (const PageEntry& entry : document.pages) {
    QPDFObjectHandle page = entry.page;
    QPDFObjectHandle annotations = page.getKey("/Annots");
    count += annotations.isArray() ? annotations.getArrayNItems() : 0;
  }
  return count;
}

/// The library draws a field by a filter over its appearance, which takes effect only where streams are decoded. Here
/// they are written as they are.
void settleAppearances(QPDFObjectHandle page) {
  QPDFObjectHandle annotations = page.getKey("/Annots");
  if (!annotations.isArray()) return;
  for (QPDFObjectHandle annotation : annotations.getArrayAsVector()) {
    QPDFObjectHandle appearance = annotation.getKeyIfDict("/AP").getKeyIfDict("/N");
    if (appearance.isStream() && appearance.isDataModified())
      appearance.replaceStreamData(appearance.getStreamData(), QPDFObjectHandle::newNull(),
                                   QPDFObjectHandle::newNull());
  }
}

}  // namespace

bool drawWaitingFields(Document& document) {
  QPDFObjectHandle form = document.pdf->getRoot().getKeyIfDict("/AcroForm");
  QPDFObjectHandle waiting = form.getKeyIfDict("/NeedAppearances");
  if (!waiting.isBool() || !waiting.getBoolValue() || countAnnotations(document) > mostAnnotations) return false;
  QPDFAcroFormDocumentHelper(*document.pdf).generateAppearancesIfNeeded();
  for (const PageEntry& entry : document.pages) settleAppearances(entry.page);
  return true;
}

}  // namespace Press
