// Several pages on one sheet.
#include "formats/sentences.h"
#include "press/pages/wrap.h"

#include <stdexcept>

namespace Press {
namespace {

// The cells of a sheet for display, in points.
struct Grid {
  Box sheet;
  int columns = 1;
  int rows = 1;

  // Row by row, from left to right and top to bottom.
  Box cell(int index) const {
    const int column = index % columns, row = index / columns;
    const double width = sheet.x1 / columns, height = sheet.y1 / rows;
    const double x = width * column, y = sheet.y1 - height * (row + 1);
    return {x, y, x + width, y + height};
  }
};

// Two pages go side by side along the longer side of the paper, so the sheet is rotated; four keep its orientation.
Grid gridFor(const Box& paper, int count) {
  if (count != 2) return {paper, 2, 2};
  const Box turned{0, 0, paper.y1, paper.x1};
  return paper.x1 > paper.y1 ? Grid{turned, 1, 2} : Grid{turned, 2, 1};
}

}  // namespace

// A page that occurs several times is stored once.
QPDFObjectHandle PageWrap::formOf(const PageEntry& entry, const PageShape& shape) {
  const auto known = formsOfPages.find(entry.page.getObjGen());
  if (known != formsOfPages.end()) return known->second;
  QPDFObjectHandle form = pageAsForm(content, annotations, entry, shape);
  if (form.isNull())
    throw std::runtime_error(Formats::sentence("a page holds too much to be put on a sheet with others"));
  if (entry.page.isIndirect()) formsOfPages.emplace(entry.page.getObjGen(), form);
  return form;
}

QPDFObjectHandle PageWrap::sheetOf(const std::vector<PageEntry>& pages, int firstNumber) {
  const Grid grid = gridFor(seenBox(shapeOf(pages.front())), effects.pagesOnSheet);
  PageEntry sheet;
  sheet.page = QPDFObjectHandle::parse("<< /Type /Page >>");
  sheet.resources = sheet.page.replaceKeyAndGetNew("/Resources", QPDFObjectHandle::newDictionary());
  QPDFObjectHandle forms = dictionaryIn(sheet.resources, "/XObject");
  std::string drawn;
  for (std::size_t index = 0; index < pages.size(); ++index) {
    const int place = static_cast<int>(index);
    const PageShape shape = shapeOf(pages[index]);
    QPDFObjectHandle form = formOf(pages[index], shape);
    const std::string name = "/KilnPage" + std::to_string(place + 1);
    forms.replaceKey(name, form);
    const Turn turn{Turn::Kind::pageOnSheet, firstNumber + place};
    drawn += "q\n" + concatenation(fitInto(grid.cell(place), shape)) + "\n" +
             marks.under(shape, turn, sheet.resources) + "q " + name + " Do Q\n" +
             marks.over(shape, turn, sheet.resources) + "Q\n";
  }
  sheet.page.replaceKey("/Contents", content.shared(drawn));
  sheet.mediaBox = sheet.page.replaceKeyAndGetNew(
      "/MediaBox", QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(0, 0, grid.sheet.x1, grid.sheet.y1)));
  apply(sheet, {Turn::Kind::sheet, (firstNumber - 1) / effects.pagesOnSheet + 1});
  return sheet.page;
}

}  // namespace Press
