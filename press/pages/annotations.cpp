#include "press/pages/annotations.h"

#include "press/pdf/qpdf.h"

namespace Press {
namespace {

// The appearance to print an annotation with, or null. A separate stream, so that it can carry the annotation's layer.
QPDFObjectHandle printedAppearance(QPDFAnnotationObjectHelper& annotation) {
  QPDFObjectHandle appearance = annotation.getAppearanceStream("/N");
  if (!appearance.isStream()) return QPDFObjectHandle::newNull();
  QPDFObjectHandle layer = annotation.getObjectHandle().getKey("/OC");
  if (!layer.isNull()) {
    appearance = appearance.copyStream();
    appearance.getDict().replaceKey("/OC", layer);
  }
  appearance.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
  return appearance;
}

// Excludes links, pop-ups and empty fields, which do not print.
bool printsWithoutLook(QPDFObjectHandle annotation) {
  QPDFObjectHandle flags = annotation.getKeyIfDict("/F");
  if (!flags.isInteger() || (flags.getIntValueAsInt() & (an_print | an_hidden)) != an_print) return false;
  for (const char* silent : {"/Link", "/Popup", "/Widget"})
    if (annotation.getKey("/Subtype").isNameAndEquals(silent)) return false;
  return true;
}

}  // namespace

bool Annotations::hasLook(QPDFObjectHandle annotation) { return annotation.getKeyIfDict("/AP").isDictionary(); }

std::string Annotations::draw(QPDFObjectHandle page, const PageShape& shape, QPDFObjectHandle resources) {
  QPDFObjectHandle annotations = page.getKey("/Annots");
  if (!annotations.isArray()) return {};
  content.countParts(annotations.getArrayNItems());
  std::string drawn;
  for (QPDFObjectHandle item : annotations.getArrayAsVector()) {
    if (!hasLook(item)) {
      metWithoutLook = metWithoutLook || printsWithoutLook(item);
      continue;
    }
    QPDFAnnotationObjectHelper annotation(item);
    if (annotation.getSubtype() == "/Popup") continue;
    QPDFObjectHandle appearance = printedAppearance(annotation);
    if (appearance.isNull()) continue;
    QPDFObjectHandle forms = dictionaryIn(resources, "/XObject");
    std::string name;
    do name = "/KilnAnnot" + std::to_string(++namesMade);
    while (forms.hasKey(name));
    const std::string call = annotation.getPageContentForAppearance(name, shape.turn, an_print, an_hidden);
    if (call.empty()) continue;
    forms.replaceKey(name, appearance);
    drawn += call;
  }
  return drawn;
}

void hideAnnotations(QPDFObjectHandle page) {
  QPDFObjectHandle annotations = page.getKey("/Annots");
  if (!annotations.isArray()) return;
  for (QPDFObjectHandle annotation : annotations.getArrayAsVector()) {
    if (!Annotations::hasLook(annotation)) continue;
    QPDFObjectHandle flags = annotation.getKey("/F");
    const int value = flags.isInteger() ? flags.getIntValueAsInt() : 0;
    annotation.replaceKey("/F", QPDFObjectHandle::newInteger(value | an_hidden));
  }
}

}  // namespace Press
