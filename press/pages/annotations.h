#pragma once

#include "press/pages/content.h"

#include <string>

namespace Press {

// Draws the printable annotations of a page as page content.
class Annotations {
 public:
  explicit Annotations(PageContent& pageContent) : content(pageContent) {}

  // Content that draws the page's printable annotations in the page's coordinates; adds their appearances to
  // `resources`. Empty when there are none. Leaves the annotations unchanged.
  std::string draw(QPDFObjectHandle page, const PageShape& shape, QPDFObjectHandle resources);

  // Whether an annotation has an appearance. Others, such as links, are not drawn here; their rendering is up to the
  // reader.
  static bool hasLook(QPDFObjectHandle annotation);

  // Whether a printable annotation without an appearance was found.
  bool metOneWithoutLook() const { return metWithoutLook; }

 private:
  PageContent& content;
  int namesMade = 0;
  bool metWithoutLook = false;
};

// Hides annotations that were drawn into their page, and those that do not print. Annotations without an appearance,
// mostly links, are left unchanged.
void hideAnnotations(QPDFObjectHandle page);

}  // namespace Press
