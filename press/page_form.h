#pragma once

#include "press/page_content.h"

namespace Press {

/// The annotations of a page that print, as content of the page.
class Annotations {
 public:
  explicit Annotations(PageContent& pageContent) : content(pageContent) {}

  /// Content that draws what the page's annotations print, as the page's content sees them; their appearances are added
  /// to `resources`. Empty when there are none. The annotations themselves are left as they are.
  std::string draw(QPDFObjectHandle page, const PageShape& shape, QPDFObjectHandle resources);

  /// Whether an annotation says itself how it looks. The others, links among them, are not drawn here: readers show
  /// them as they will.
  static bool hasLook(QPDFObjectHandle annotation);
  /// Whether there was one that prints without saying how it looks.
  bool metOneWithoutLook() const { return metWithoutLook; }

 private:
  PageContent& content;
  int namesMade = 0;
  bool metWithoutLook = false;
};

/// A whole page as a form: its content and its annotations, cut to what is visible, in the page's own units. Null when
/// its content cannot be put into a form.
QPDFObjectHandle pageAsForm(PageContent& content, Annotations& annotations, const PageEntry& entry,
                            const PageShape& shape);

}  // namespace Press
