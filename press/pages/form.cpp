#include "press/pages/form.h"

#include "press/pdf/qpdf.h"

namespace Press {
namespace {

// Copies the page's transparency group to the form.
void keepGroup(QPDFObjectHandle page, QPDFObjectHandle form) {
  QPDFObjectHandle group = page.getKey("/Group");
  if (group.isDictionary()) form.getDict().replaceKey("/Group", group);
}

}  // namespace

QPDFObjectHandle pageAsForm(PageContent& content, Annotations& annotations, const PageEntry& entry,
                            const PageShape& shape) {
  QPDFObjectHandle resources = entry.resources;
  if (!resources.isDictionary()) resources = QPDFObjectHandle::newDictionary();
  QPDFObjectHandle drawing = content.asForm(shape.visible, content.streamsOf(entry.page), resources);
  if (drawing.isNull()) return drawing;
  QPDFObjectHandle around = QPDFObjectHandle::newDictionary();
  const std::string notes = annotations.draw(entry.page, shape, around);
  QPDFObjectHandle whole = drawing;
  if (!notes.empty()) {
    dictionaryIn(around, "/XObject").replaceKey("/KilnPage", drawing);
    whole = content.newForm(shape.visible, "/KilnPage Do\n" + notes, around);
  }
  keepGroup(entry.page, whole);
  return whole;
}

}  // namespace Press
