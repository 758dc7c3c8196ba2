#include "press/pdf/form_fields.h"

#include "formats/text.h"
#include "press/error.h"
#include "press/pdf/field_look.h"
#include "press/pdf/qpdf.h"

#include <algorithm>
#include <sstream>

namespace Press {
namespace {

// Limits; fields beyond them are left to the reader.
constexpr int mostFields = 5'000;
constexpr std::size_t mostCharacters = 2'000;
constexpr std::size_t mostCharactersOfAll = 100'000;

// Flags of text and choice fields.
constexpr int flowsFlag = 1 << 12, passwordFlag = 1 << 13, comboFlag = 1 << 17, combFlag = 1 << 24;

bool endsLine(char character) { return character == '\r' || character == '\n'; }

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (!endsLine(text[index]))
      lines.back() += text[index];
    else if (text[index] != '\n' || index == 0 || text[index - 1] != '\r')
      lines.emplace_back();
  }
  return lines;
}

// The display name of a choice, given its export value.
std::string nameOfChoice(QPDFObjectHandle options, const std::string& value) {
  if (!options.isArray()) return value;
  for (QPDFObjectHandle option : options.getArrayAsVector()) {
    if (!option.isArray() || option.getArrayNItems() != 2) continue;
    QPDFObjectHandle own = option.getArrayItem(0), name = option.getArrayItem(1);
    if (own.isString() && name.isString() && own.getUTF8Value() == value) return name.getUTF8Value();
  }
  return value;
}

std::vector<std::string> writtenIn(QPDFFormFieldObjectHelper& field) {
  QPDFObjectHandle value = field.getValue();
  std::vector<QPDFObjectHandle> values;
  if (value.isString()) values = {value};
  if (value.isArray()) values = value.getArrayAsVector();
  std::vector<std::string> lines;
  for (QPDFObjectHandle each : values) {
    if (!each.isString()) continue;
    const std::string text = each.getUTF8Value();
    if (field.isChoice()) {
      lines.push_back(nameOfChoice(field.getInheritableFieldValue("/Opt"), text));
      continue;
    }
    for (std::string& line : linesOf(text)) lines.push_back(std::move(line));
  }
  return lines;
}

// Parses the operands and operators of a default appearance string.
void readManner(const std::string& manner, FieldText& text, std::string& font) {
  std::istringstream words(manner);
  std::vector<std::string> operands;
  for (std::string word; words >> word;) {
    if (word == "Tf" && operands.size() >= 2) {
      font = operands[operands.size() - 2];
      std::istringstream(operands.back()) >> text.size;
    } else if (word == "g" || word == "rg" || word == "k") {
      const std::size_t count = word == "g" ? 1 : word == "rg" ? 3 : 4;
      text.colour.clear();
      for (std::size_t index = operands.size() - std::min(count, operands.size()); index < operands.size(); ++index) {
        double part = 0;
        std::istringstream(operands[index]) >> part;
        text.colour += number(part) + " ";
      }
      text.colour = operands.size() < count ? std::string() : text.colour + word;
    } else {
      operands.push_back(word);
      continue;
    }
    operands.clear();
  }
  text.size = std::clamp(text.size, 0.0, 1000.0);
}

// Parses a font's PostScript name: "ABCDEF+Arial-BoldItalicMT".
void readFace(const std::string& font, FieldText& text) {
  std::string name = font.substr(std::min(font.find_first_not_of('/'), font.size()));
  if (name.size() > 7 && name[6] == '+') name.erase(0, 7);
  const auto has = [&name](const char* part) { return name.find(part) != std::string::npos; };
  text.isBold = has("Bold");
  text.isItalic = has("Italic") || has("Oblique");
  name.resize(std::min(name.find_first_of("-,"), name.size()));
  if (has("Times") || has("TiRo")) name = "Times New Roman";
  if (has("Cour")) name = "Courier New";
  if (has("Helv") || name.empty()) name = "Helvetica";
  text.face = name;
}

FieldText textOf(QPDFFormFieldObjectHelper& field) {
  FieldText text;
  text.lines = writtenIn(field);
  text.alignment = std::clamp(field.getQuadding(), 0, 2);
  std::string font;
  readManner(field.getDefaultAppearance(), text, font);
  QPDFObjectHandle fonts = field.getDefaultResources().getKeyIfDict("/Font");
  QPDFObjectHandle base = fonts.getKeyIfDict(font.empty() ? "/" : font).getKeyIfDict("/BaseFont");
  readFace(base.isName() ? base.getName() : font, text);

  const int flags = field.getFlags();
  if (field.isChoice()) {
    text.flows = (flags & comboFlag) == 0;
    return text;
  }
  text.flows = (flags & flowsFlag) != 0;
  if (text.lines.empty() || text.flows) return text;
  if (flags & passwordFlag) text.lines = {std::string(Formats::toUtf32(text.lines.front()).size(), '*')};
  QPDFObjectHandle most = field.getInheritableFieldValue("/MaxLen");
  if ((flags & combFlag) != 0 && most.isInteger()) text.cells = std::clamp(most.getIntValueAsInt(), 0, 1000);
  return text;
}

// Content that sets a colour of an annotation; empty for none. The operators are for one, three and four components.
std::string colourFrom(QPDFObjectHandle colour, const char* grey, const char* rgb, const char* cmyk) {
  if (!colour.isArray()) return {};
  std::string content;
  for (QPDFObjectHandle part : colour.getArrayAsVector())
    content += (part.isNumber() ? number(part.getNumericValue()) : "0") + " ";
  switch (colour.getArrayNItems()) {
    case 1: return content + grey;
    case 3: return content + rgb;
    case 4: return content + cmyk;
    default: return {};
  }
}

void draw(PageContent& content, QPDFObjectHandle annotation, const FieldText& text) {
  const QPDFObjectHandle::Rectangle place = annotation.getKey("/Rect").getArrayAsRectangle();
  FieldFrame frame;
  frame.width = place.urx - place.llx;
  frame.height = place.ury - place.lly;
  if (!(frame.width > 0 && frame.height > 0 && frame.width < 1e5 && frame.height < 1e5)) return;
  QPDFObjectHandle characteristics = annotation.getKeyIfDict("/MK");
  frame.background = colourFrom(characteristics.getKeyIfDict("/BG"), "g", "rg", "k");
  frame.border = colourFrom(characteristics.getKeyIfDict("/BC"), "G", "RG", "K");
  QPDFObjectHandle width = annotation.getKeyIfDict("/BS").getKeyIfDict("/W");
  if (width.isNumber()) frame.borderWidth = std::clamp(width.getNumericValue(), 0.0, 100.0);
  QPDFObjectHandle turn = characteristics.getKeyIfDict("/R");
  const int quarters = turn.isInteger() ? ((turn.getIntValueAsInt() / 90 % 4) + 4) % 4 : 0;
  if (quarters % 2 == 1) std::swap(frame.width, frame.height);
  QPDFObjectHandle look = fieldLook(content, frame, text);
  constexpr const char* matrices[] = {"[1 0 0 1 0 0]", "[0 1 -1 0 0 0]", "[-1 0 0 -1 0 0]", "[0 -1 1 0 0 0]"};
  look.getDict().replaceKey("/Matrix", QPDFObjectHandle::parse(matrices[quarters]));
  annotation.replaceKey("/AP", QPDFObjectHandle::newDictionary({{"/N", look}}));
}

// Selects a button's appearance state by the value of its field.
void showState(QPDFObjectHandle annotation, QPDFObjectHandle value) {
  if (!value.isName()) return;
  const bool isOn = annotation.getKeyIfDict("/AP").getKeyIfDict("/N").hasKey(value.getName());
  annotation.replaceKey("/AS", isOn ? value : QPDFObjectHandle::newName("/Off"));
}

// Draws fields up to the limits.
class Fields {
 public:
  Fields(QPDF& pdf, bool redrawsAll) : content(pdf), isForAll(redrawsAll) {}

  void take(QPDFObjectHandle annotation) {
    if (!annotation.isDictionary() || !annotation.getKey("/Subtype").isNameAndEquals("/Widget")) return;
    QPDFObjectHandle flags = annotation.getKey("/F");
    if (!flags.isInteger() || (flags.getIntValueAsInt() & (an_print | an_hidden)) != an_print) return;
    const bool hasLook = annotation.getKeyIfDict("/AP").hasKey("/N");
    if (hasLook && !isForAll) return;
    QPDFFormFieldObjectHelper field(annotation);
    if (field.isCheckbox() || field.isRadioButton()) {
      if (isForAll) showState(annotation, field.getValue());
    } else if (field.isText() || field.isChoice()) {
      drawIfSmall(annotation, textOf(field));
    }
  }

 private:
  void drawIfSmall(QPDFObjectHandle annotation, const FieldText& text) {
    std::size_t characters = 0;
    for (const std::string& line : text.lines) characters += line.size();
    if (characters > std::min(mostCharacters, charactersLeft) || fieldsLeft == 0) return;
    charactersLeft -= characters;
    --fieldsLeft;
    draw(content, annotation, text);
  }

  PageContent content;
  bool isForAll;
  int fieldsLeft = mostFields;
  std::size_t charactersLeft = mostCharactersOfAll;
};

}  // namespace

void drawWaitingFields(Document& document) {
  QPDFObjectHandle form = document.pdf->getRoot().getKeyIfDict("/AcroForm");
  QPDFObjectHandle waiting = form.getKeyIfDict("/NeedAppearances");
  Fields fields(*document.pdf, waiting.isBool() && waiting.getBoolValue());
  for (const PageEntry& entry : document.pages) {
    QPDFObjectHandle page = entry.page;
    QPDFObjectHandle annotations = page.getKey("/Annots");
    if (!annotations.isArray()) continue;
    for (QPDFObjectHandle annotation : annotations.getArrayAsVector()) fields.take(annotation);
  }
}

}  // namespace Press
