#pragma once

#include "press/job/effects.h"
#include "press/marks/marks.h"
#include "press/pages/content.h"
#include "press/pages/form.h"
#include "press/pages/shape.h"
#include "press/pdf/document.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Press {

// Wraps effects around the content of a document's pages. The content itself is unchanged: each effect is content
// before and after it, shared between pages where possible.
class PageWrap {
 public:
  // The document and its marks must outlive this object.
  PageWrap(QPDF& document, Marks& marks);

  // Sets the effects for `apply` and `sheetOf`. Throws Error when a mark cannot be printed.
  void prepare(const Effects& effects);

  // Modifies the dictionary `entry.page` so that the page prints with the effects. Draws printable annotations as part
  // of the page, but leaves the annotations unchanged. Call once per page.
  void apply(const PageEntry& entry, const Turn& turn);

  // A new page: a sheet with these pages and all effects; the first one is the job's page `firstNumber`. The sheet has
  // the size of its first page.
  QPDFObjectHandle sheetOf(const std::vector<PageEntry>& pages, int firstNumber);

  // Sentences about content that could not get the effects.
  std::vector<std::string> notes() const;

 private:
  QPDFObjectHandle formOf(const PageEntry& entry, const PageShape& shape);
  void enclose(const PageEntry& entry, const PageShape& shape, Streams& streams, QPDFObjectHandle& resources);
  std::string paintOver(const Paint& paint, const PageShape& shape, QPDFObjectHandle& resources);

  QPDF& pdf;
  PageContent content;
  Annotations annotations;
  Marks& marks;
  Effects effects;
  std::map<QPDFObjGen, QPDFObjectHandle> formsOfPages;
  QPDFObjectHandle rgbGroup;
  struct PaintState {
    QPDFObjectHandle object;
    std::string name;  // in the resources
    int namesMade = 0;
  };
  std::map<std::string_view, PaintState> paintStates;  // by the name of the paint
};

}  // namespace Press
