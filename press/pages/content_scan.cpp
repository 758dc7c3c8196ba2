#include "press/pages/content_scan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace Press {
namespace {

enum class Kind : std::uint8_t { regular, space, delimiter };

constexpr std::array<Kind, 256> makeKinds() {
  std::array<Kind, 256> kinds{};
  for (const char c : {'\0', '\t', '\n', '\f', '\r', ' '}) kinds[static_cast<unsigned char>(c)] = Kind::space;
  for (const char c : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'})
    kinds[static_cast<unsigned char>(c)] = Kind::delimiter;
  return kinds;
}

constexpr std::array<Kind, 256> kinds = makeKinds();

Kind kindOf(char c) { return kinds[static_cast<unsigned char>(c)]; }

bool isOfNumber(char c) { return (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '+'; }

// The letters of an operator packed into a number, for a switch. Longer words, which are not operators, give zero.
constexpr std::uint32_t packed(std::string_view word) {
  if (word.size() > 3) return 0;
  std::uint32_t value = 0;
  for (const char c : word) value = value << 8 | static_cast<unsigned char>(c);
  return value;
}

// Whether this is an operator that neither opens nor closes anything.
bool isPlain(std::uint32_t operation) {
  switch (operation) {
    case packed("W"):
    case packed("W*"):
    case packed("cm"):
    case packed("w"):
    case packed("J"):
    case packed("j"):
    case packed("M"):
    case packed("d"):
    case packed("ri"):
    case packed("i"):
    case packed("gs"):
    case packed("Tc"):
    case packed("Tw"):
    case packed("Tz"):
    case packed("TL"):
    case packed("Tf"):
    case packed("Tr"):
    case packed("Ts"):
    case packed("Td"):
    case packed("TD"):
    case packed("Tm"):
    case packed("T*"):
    case packed("Tj"):
    case packed("TJ"):
    case packed("'"):
    case packed("\""):
    case packed("CS"):
    case packed("cs"):
    case packed("SC"):
    case packed("SCN"):
    case packed("sc"):
    case packed("scn"):
    case packed("G"):
    case packed("g"):
    case packed("RG"):
    case packed("rg"):
    case packed("K"):
    case packed("k"):
    case packed("sh"):
    case packed("Do"):
    case packed("MP"):
    case packed("DP"): return true;
    default: return false;
  }
}

class Scan {
 public:
  explicit Scan(std::string_view text) : content(text) {}

  bool run() {
    while (at < content.size()) {
      const char c = content[at];
      if (kindOf(c) == Kind::space)
        ++at;
      else if (kindOf(c) == Kind::regular ? !word() : !delimiter(c))
        return false;
    }
    return saved == 0 && marked == 0 && brackets == 0 && !inText && !inPath;
  }

 private:
  bool word() {
    const std::size_t start = at;
    skipRegular();
    const std::string_view text = content.substr(start, at - start);
    const char first = text.front();
    if (isOfNumber(first)) return std::ranges::all_of(text, isOfNumber);
    if (text == "true" || text == "false" || text == "null") return true;
    return brackets == 0 && command(packed(text));
  }

  bool delimiter(char c) {
    ++at;
    switch (c) {
      case '/': skipRegular(); return true;
      case '%':
        at = content.find_first_of("\r\n", at);
        if (at == std::string_view::npos) at = content.size();
        return true;
      case '(': return string();
      case '<':
        if (at < content.size() && content[at] == '<') {
          ++at;
          ++brackets;
          return true;
        }
        at = content.find('>', at);
        return at++ != std::string_view::npos;
      case '>': return at < content.size() && content[at++] == '>' && --brackets >= 0;
      case '[': ++brackets; return true;
      case ']': return --brackets >= 0;
      default: return false;
    }
  }

  bool string() {
    int depth = 1;
    while (depth > 0 && at < content.size()) {
      switch (content[at++]) {
        case '(': ++depth; break;
        case ')': --depth; break;
        case '\\': ++at; break;
        default: break;
      }
    }
    return depth == 0;
  }

  bool command(std::uint32_t operation) {
    switch (operation) {
      case packed("q"): ++saved; return true;
      case packed("Q"): return --saved >= 0;
      case packed("BT"): inText = true; return true;
      case packed("ET"): inText = false; return true;
      case packed("BMC"):
      case packed("BDC"): ++marked; return true;
      case packed("EMC"): return --marked >= 0;
      case packed("m"):
      case packed("l"):
      case packed("c"):
      case packed("v"):
      case packed("y"):
      case packed("h"):
      case packed("re"): inPath = true; return true;
      case packed("S"):
      case packed("s"):
      case packed("f"):
      case packed("F"):
      case packed("f*"):
      case packed("B"):
      case packed("B*"):
      case packed("b"):
      case packed("b*"):
      case packed("n"): inPath = false; return true;
      default: return isPlain(operation);
    }
  }

  void skipRegular() {
    while (at < content.size() && kindOf(content[at]) == Kind::regular) ++at;
  }

  std::string_view content;
  std::size_t at = 0;
  int saved = 0;
  int marked = 0;
  int brackets = 0;
  bool inText = false;
  bool inPath = false;
};

}  // namespace

bool standsAlone(std::string_view content) { return Scan(content).run(); }

}  // namespace Press
