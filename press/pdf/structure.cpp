#include "press/pdf/structure.h"

#include "press/pdf/qpdf.h"

#include <exception>
#include <set>

namespace Press {
namespace {

// Whether an element or reference is on this page, or names no page.
bool isOn(QPDFObjectHandle page, QPDFObjectHandle object) {
  QPDFObjectHandle named = object.getKey("/Pg");
  return named.isNull() || named.isSameObjectAs(page);
}

// Converts a kid of a structure element to refer to the form, if it is content of the page.
QPDFObjectHandle inForm(QPDFObjectHandle kid, QPDFObjectHandle page, QPDFObjectHandle form) {
  if (kid.isInteger()) {
    QPDFObjectHandle reference = QPDFObjectHandle::parse("<< /Type /MCR >>");
    reference.replaceKey("/MCID", kid);
    kid = reference;
  } else if (!kid.getKeyIfDict("/MCID").isInteger() || kid.hasKey("/Stm") || !isOn(page, kid)) {
    return kid;
  }
  kid.replaceKey("/Pg", page);
  kid.replaceKey("/Stm", form);
  return kid;
}

}  // namespace

// The parent tree maps the page's number to the elements of its marked content.
void moveStructure(QPDF& pdf, PageContent& content, QPDFObjectHandle page, QPDFObjectHandle form) {
  QPDFObjectHandle number = page.getKey("/StructParents");
  QPDFObjectHandle parents = pdf.getRoot().getKeyIfDict("/StructTreeRoot").getKeyIfDict("/ParentTree");
  if (!number.isInteger() || !parents.isDictionary()) return;
  form.getDict().replaceKey("/StructParents", number);
  page.removeKey("/StructParents");
  try {
    QPDFObjectHandle elements;
    if (!QPDFNumberTreeObjectHelper(parents, pdf).findObject(number.getIntValue(), elements)) return;
    std::set<QPDFObjGen> seen;
    for (QPDFObjectHandle element : elements.getArrayAsVector()) {
      if (!element.isDictionary() || !isOn(page, element) || !seen.insert(element.getObjGen()).second) continue;
      QPDFObjectHandle kids = element.getKey("/K");
      if (!kids.isArray()) kids = element.replaceKeyAndGetNew("/K", QPDFObjectHandle::newArray({kids}));
      content.countParts(kids.getArrayNItems());
      for (int index = 0; index < kids.getArrayNItems(); ++index)
        kids.setArrayItem(index, inForm(kids.getArrayItem(index), page, form));
    }
  } catch (const std::exception&) {
    return;  // the damaged structure is unusable anyway
  }
}

}  // namespace Press
