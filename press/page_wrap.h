#pragma once

#include <map>
#include <string>
#include <vector>

#include "press/document.h"
#include "press/effects.h"
#include "press/marks.h"
#include "press/page_content.h"
#include "press/page_form.h"
#include "press/page_shape.h"

namespace Press {

/// Puts effects around the content of a document's pages. The content itself stays as it is: each effect is content
/// before and after it, and what is the same on many pages is stored once.
class PageWrap {
 public:
  /// The document and the marks on it must outlive this object.
  PageWrap(QPDF& document, Marks& marks);

  /// The effects that `apply` and `sheetOf` put on pages. Throws `Error` when a mark cannot be printed.
  void prepare(const Effects& effects);

  /// Changes the dictionary `entry.page` so that the page prints with the effects. Annotations that print become part
  /// of the page; the annotations themselves are left as they are. Call once for a page.
  void apply(const PageEntry& entry, const Turn& turn);

  /// A new page, a sheet with these pages on it and all effects; the first of them is the job's page `firstNumber`. The
  /// sheet has the size of its first page.
  QPDFObjectHandle sheetOf(const std::vector<PageEntry>& pages, int firstNumber);

  /// Sentences on what was not given the effects.
  std::vector<std::string> notes() const;

 private:
  QPDFObjectHandle formOf(const PageEntry& entry, const PageShape& shape);
  void enclose(const PageEntry& entry, const PageShape& shape, Streams& streams, QPDFObjectHandle& resources);
  std::string negate(const PageShape& shape, QPDFObjectHandle& resources);

  QPDF& pdf;
  PageContent content;
  Annotations annotations;
  Marks& marks;
  Effects effects;
  std::map<QPDFObjGen, QPDFObjectHandle> formsOfPages;
  QPDFObjectHandle rgbGroup;
  QPDFObjectHandle negativeState;
  std::string negativeName = "/KilnNegative";
  int namesMade = 0;
};

}  // namespace Press
