#include "press/job/sample.h"

#include "press/pdf/box.h"
#include "press/pdf/bytes.h"
#include "press/pdf/canvas.h"

#include <array>
#include <initializer_list>

namespace Press {
namespace {

using Align = Canvas::Align;

constexpr Ink black = "0.13 0.15 0.17 rg";
constexpr Ink grey = "0.45 0.48 0.5 rg";
constexpr Ink faint = "0.86 0.88 0.88 rg";
constexpr Ink white = "1 g";
constexpr Ink green = "0.07 0.36 0.3 rg";
constexpr Ink leaf = "0.35 0.62 0.4 rg";
constexpr Ink sun = "0 0.35 0.85 0 k";
constexpr Ink clay = "0 0.65 0.7 0.1 k";
constexpr Ink cream = "0.97 0.95 0.9 rg";

void footer(Canvas& page, double width, std::string_view number) {
  page.stroke(faint, 0.75, 56, 52, width - 56, 52);
  page.text(grey, false, 8, 56, 38, "Orchard Street Allotments");
  page.text(grey, false, 8, width - 56, 38, number, Align::right);
}

void barChart(Canvas& page, double x, double y) {
  struct Month {
    std::string_view name;
    double kept, given;
  };
  constexpr std::array<Month, 6> months = {
      {{"Apr", 18, 6}, {"May", 42, 15}, {"Jun", 77, 38}, {"Jul", 118, 64}, {"Aug", 131, 90}, {"Sep", 96, 71}}};
  for (int line = 0; line <= 5; ++line) {
    const double height = y + line * 30;
    page.stroke(line == 0 ? grey : faint, 0.5, x + 24, height, x + 483, height);
    page.text(grey, false, 7.5, x + 18, height - 2.5, number(line * 30), Align::right);
  }
  double left = x + 44;
  for (const Month& month : months) {
    page.fill(leaf, left, y, 24, month.kept);
    page.fill(sun, left + 26, y, 24, month.given);
    page.text(grey, false, 8, left + 25, y - 13, month.name, Align::centre);
    left += 76;
  }
  page.fill(leaf, x + 330, y + 168, 8, 8);
  page.text(black, false, 8, x + 342, y + 168.5, "kept (kg)");
  page.fill(sun, x + 400, y + 168, 8, 8);
  page.text(black, false, 8, x + 412, y + 168.5, "given away (kg)");
}

std::string letter() {
  Canvas page;
  page.fill(green, 0, 742, 595, 100);
  page.text(white, true, 26, 56, 782, "Orchard Street Allotments");
  page.text("0.75 0.88 0.8 rg", false, 11, 56, 762, "Letter to members, autumn");
  page.fill(sun, 503, 766, 36, 36);
  page.fill(green, 512, 775, 18, 18);

  double y = page.paragraph(black, 10.5, 56, 706, 483, "Dear members,");
  y = page.paragraph(black, 10.5, 56, y - 5, 483,
                     "the season closes with the fullest shed that we have seen. Twenty-four plots brought in 766 "
                     "kilograms, and for the first time more than a third of that left the gate in other people's "
                     "baskets: the Saturday table at the fence gave away 284 kilograms.");
  y = page.paragraph(black, 10.5, 56, y - 5, 483,
                     "The wet June was hard on the tomatoes and kind to everything else. The beans along the north "
                     "wall carried into late September, and the two new beds by the pump paid for their timber "
                     "before the end of July.");
  page.text(green, true, 13, 56, y - 16, "Harvest by month");
  barChart(page, 56, y - 212);
  y -= 258;

  const std::array<std::array<std::string_view, 2>, 3> figures = {{{"766 kg", "harvested on all plots"},
                                                                   {"284 kg", "given away on Saturdays"},
                                                                   {"12", "names on the waiting list"}}};
  double left = 56;
  for (const auto& [value, meaning] : figures) {
    page.fill(cream, left, y - 44, 153, 52);
    page.text(clay, true, 17, left + 12, y - 14, value);
    page.text(grey, false, 8.5, left + 12, y - 31, meaning);
    left += 165;
  }
  y = page.paragraph(black, 10.5, 56, y - 70, 483,
                     "Please look at the plan on page 3 before the meeting: the path behind plots 7 to 12 moves by a "
                     "metre, and the compost bays move with it. The form on the last page goes into the box at the "
                     "pump.");
  page.text(black, false, 10.5, 56, y - 8, "With thanks to everyone who carried water,");
  page.text(green, true, 10.5, 56, y - 26, "The committee");
  footer(page, 595, "1");
  return page.content();
}

void patches(Canvas& page, double y, std::string_view title, std::initializer_list<Ink> inks) {
  page.text(grey, false, 8, 56, y + 44, title);
  const double width = 483.0 / static_cast<double>(inks.size());
  double left = 56;
  for (const Ink ink : inks) {
    page.fill(ink, left, y, width - 4, 38);
    left += width;
  }
}

std::string testPage() {
  Canvas page;
  page.text(black, true, 11, 24, 809, "top left");
  page.text(black, true, 11, 571, 809, "top right", Align::right);
  page.text(black, false, 11, 24, 24, "bottom left");
  page.text(black, false, 11, 571, 24, "bottom right", Align::right);
  for (const double x : {16.0, 579.0})
    for (const double y : {16.0, 826.0}) {
      page.stroke(black, 0.5, x - 8, y, x + 8, y);
      page.stroke(black, 0.5, x, y - 8, x, y + 8);
    }
  page.raw("0.07 0.36 0.3 rg 297.5 780 m 342 722 l 316 722 l 316 640 l 279 640 l 279 722 l 253 722 l h f");
  page.text(green, true, 12, 297.5, 622, "this way up", Align::centre);
  page.text(green, true, 90, 404, 668, "R");
  page.text(grey, false, 9, 404, 646, "R reads wrong in a mirror");

  patches(page, 538, "RGB", {"1 0 0 rg", "1 1 0 rg", "0 1 0 rg", "0 1 1 rg", "0 0 1 rg", "1 0 1 rg"});
  patches(page, 470, "CMYK", {"1 0 0 0 k", "0 1 0 0 k", "0 0 1 0 k", "0 0 0 1 k", "1 1 0 0 k", "0 1 1 0 k"});
  patches(page, 402, "Grey", {"0 g", "0.15 g", "0.3 g", "0.45 g", "0.6 g", "0.75 g", "0.9 g", "1 g"});
  page.text(grey, false, 8, 56, 378, "Blend");
  page.raw("/Pattern cs /Blend scn 56 334 479 38 re f");

  page.text(grey, false, 8, 56, 306, "Lines, 0.1 to 2 points");
  double y = 294;
  for (const double width : {0.1, 0.25, 0.5, 1.0, 2.0}) {
    page.stroke(black, width, 56, y, 280, y);
    y -= 12;
  }
  for (int line = 0; line < 24; ++line) page.stroke(clay, 0.25, 304 + line * 10, 246, 299 + line * 10, 294);

  page.text(grey, false, 8, 56, 214, "Type, 5 to 24 points");
  y = 200;
  for (const double size : {5.0, 7.0, 9.0, 12.0, 16.0, 24.0}) {
    page.text(black, false, size, 56, y - size * 0.75, "Pack my box with five dozen liquor jugs");
    y -= size * 1.35 + 3;
  }
  page.text(grey, false, 8, 539, 60, "2", Align::right);
  return page.content();
}

std::string plan() {
  Canvas page;
  page.fill(cream, 0, 0, 1190.55, 841.89);
  page.text(green, true, 34, 64, 766, "Site plan");
  page.text(grey, false, 13, 64, 744, "As it will be in spring. A3, one centimetre is one metre.");
  page.fill("0.88 0.9 0.82 rg", 64, 80, 860, 636);
  page.fill("0.8 0.74 0.62 rg", 64, 384, 860, 28);
  page.fill("0.8 0.74 0.62 rg", 480, 80, 28, 636);
  int plot = 0;
  for (const double y : {568.0, 424.0, 248.0, 104.0})
    for (const double x : {84.0, 216.0, 348.0, 524.0, 656.0, 788.0}) {
      page.fill(++plot % 5 == 0 ? sun : plot % 3 == 0 ? Ink("0.55 0.72 0.45 rg") : leaf, x, y, 112, 124);
      for (int row = 1; row < 8; ++row)
        page.stroke("0.25 0.48 0.32 rg", 1, x + 8, y + row * 15.5, x + 104, y + row * 15.5);
      page.fill(cream, x + 8, y + 94, 26, 20);
      page.text(black, true, 12, x + 21, y + 100, number(plot), Align::centre);
    }
  page.fill("0.6 0.3 0 0.1 k", 470, 374, 48, 48);
  page.text(white, true, 11, 494, 394, "Pump", Align::centre);

  page.raw("0.07 0.36 0.3 rg 1050 716 m 1074 656 l 1050 668 l 1026 656 l h f");
  page.text(green, true, 16, 1050, 636, "North", Align::centre);
  const std::array<std::pair<Ink, std::string_view>, 4> legend = {{{leaf, "Vegetables"},
                                                                   {"0.55 0.72 0.45 rg", "Fruit and berries"},
                                                                   {sun, "Shared beds"},
                                                                   {"0.8 0.74 0.62 rg", "Paths"}}};
  double y = 560;
  for (const auto& [ink, meaning] : legend) {
    page.fill(ink, 964, y, 24, 24);
    page.text(black, false, 13, 1000, y + 7, meaning);
    y -= 40;
  }
  page.stroke(black, 1.5, 964, 120, 1134, 120);
  for (int metre = 0; metre <= 6; ++metre)
    page.stroke(black, 1.5, 964 + metre * 28.35, 120, 964 + metre * 28.35, metre % 3 == 0 ? 132 : 126);
  page.text(black, false, 11, 964, 100, "0");
  page.text(black, false, 11, 1134, 100, "6 m", Align::right);
  page.text(grey, false, 10, 1134, 40, "3", Align::right);
  return page.content();
}

std::string form() {
  Canvas page;
  page.raw("0 1 -1 0 595 0 cm");  // the page is rotated by 90 degrees; from here on it is 842 wide and 595 high
  page.fill(green, 0, 515, 842, 80);
  page.text(white, true, 24, 56, 546, "I would like to help");
  page.text("0.75 0.88 0.8 rg", false, 11, 56, 528, "Put this into the box at the pump before the meeting.");
  page.text(grey, false, 9, 56, 470, "Name");
  page.text(grey, false, 9, 56, 400, "I can");
  page.text(black, false, 12, 84, 370, "keep the Saturday table");
  page.text(black, false, 12, 84, 342, "move the compost bays");
  page.text(black, false, 12, 84, 314, "lend a wheelbarrow");
  page.text(grey, false, 9, 56, 262, "Anything else");
  for (const double y : {230.0, 196.0, 162.0, 128.0}) page.stroke(faint, 0.75, 56, y, 786, y);
  footer(page, 842, "4");
  return page.content();
}

// A field on the rotated page, at a position on the displayed page from its left and bottom.
int addField(PdfBytes& pdf, int page, int fonts, std::string_view entries, double x, double y, double width,
             double height, const std::string& look, bool isBox) {
  const std::string box = "[0 0 " + number(width) + " " + number(height) + "]";
  const int appearance = pdf.addStream("/Type /XObject /Subtype /Form /BBox " + box + " /Matrix [0 1 -1 0 0 0] " +
                                           "/Resources << /Font " + reference(fonts) + " >>",
                                       look);
  const std::string states = isBox ? "<< /Yes " + reference(appearance) + " >>" : reference(appearance);
  return pdf.add("<< /Type /Annot /Subtype /Widget /F 4 /MK << /R 90 >> /P " + reference(page) + " /Rect [" +
                 number(595 - y - height) + " " + number(x) + " " + number(595 - y) + " " + number(x + width) +
                 "] /AP << /N " + states + " >> " + std::string(entries) + " >>");
}

}  // namespace

std::string samplePdf() {
  PdfBytes pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int regular = pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>");
  const int bold = pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>");
  const int fonts = pdf.add("<< /F1 " + reference(regular) + " /F2 " + reference(bold) + " >>");
  const int blend = pdf.add("<< /PatternType 2 /Shading << /ShadingType 2 /ColorSpace /DeviceRGB /Coords [56 0 535 0] "
                            "/Function << /FunctionType 2 /Domain [0 1] /C0 [0.07 0.36 0.3] /C1 [1 0.85 0.3] /N 1 >> "
                            ">> >>");
  const std::string fontEntry = "/Font " + reference(fonts);
  std::string kids;
  const auto addPage = [&](std::string_view entries, const std::string& resources, const std::string& content) {
    const int number = pdf.reserve();
    const int stream = pdf.addStream("", content);
    pdf.set(number, "<< /Type /Page /Parent " + reference(pages) + " /Contents " + reference(stream) +
                        " /Resources << " + resources + " >> " + std::string(entries) + " >>");
    kids += reference(number) + " ";
    return number;
  };
  addPage("/MediaBox [0 0 595 842]", fontEntry, letter());
  addPage("/MediaBox [0 0 595 842]", fontEntry + " /Pattern << /Blend " + reference(blend) + " >>", testPage());
  addPage("/MediaBox [0 0 1190.55 841.89]", fontEntry, plan());
  const int fields = pdf.reserve();
  const int formPage = addPage("/MediaBox [0 0 595 842] /Rotate 90 /Annots " + reference(fields), fontEntry, form());

  const int name =
      addField(pdf, formPage, fonts, "/FT /Tx /T (Name) /V (Ada Field) /DA (/F1 14 Tf 0 g)", 56, 430, 360, 28,
               "0.95 0.97 0.95 rg 0 0 360 28 re f 0.13 0.15 0.17 rg BT /F1 14 Tf 8 9 Td (Ada Field) "
               "Tj ET",
               false);
  const std::string ticked = "0.35 0.62 0.4 RG 1 w 0.5 0.5 15 15 re S 0.07 0.36 0.3 RG 2 w 3 8 m 7 4 l 13 12 l S";
  const int table =
      addField(pdf, formPage, fonts, "/FT /Btn /T (Table) /V /Yes /AS /Yes", 56, 366, 16, 16, ticked, true);
  const int compost =
      addField(pdf, formPage, fonts, "/FT /Btn /T (Compost) /V /Yes /AS /Yes", 56, 338, 16, 16, ticked, true);
  const int barrow =
      addField(pdf, formPage, fonts, "/FT /Btn /T (Barrow) /V /Yes /AS /Yes", 56, 310, 16, 16, ticked, true);
  const std::string all =
      "[" + reference(name) + " " + reference(table) + " " + reference(compost) + " " + reference(barrow) + "]";
  pdf.set(fields, all);
  pdf.set(pages, "<< /Type /Pages /Count 4 /Kids [" + kids + "] >>");
  pdf.set(catalog, "<< /Type /Catalog /Pages " + reference(pages) + " /AcroForm << /Fields " + all + " /DR << /Font " +
                       reference(fonts) + " >> >> >>");
  return pdf.finish(catalog);
}

}  // namespace Press
