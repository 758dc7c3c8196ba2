#include "files/windows_names.h"

#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>
#include <array>

namespace Files {
namespace {

// Devices: reserved in every folder, with any extension.
bool isDevice(std::u16string_view name) {
  std::u16string stem(name.substr(0, name.find(u'.')));
  stem.erase(stem.find_last_not_of(u' ') + 1);
  for (char16_t& unit : stem)
    if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - u'a' + u'A');

  constexpr std::array<std::u16string_view, 6> alone = {u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
  if (std::find(alone.begin(), alone.end(), stem) != alone.end()) return true;
  constexpr std::u16string_view ports = u"0123456789\u00B9\u00B2\u00B3";  // the last three are superscripts
  return stem.size() == 4 && (stem.starts_with(u"COM") || stem.starts_with(u"LPT")) &&
         ports.find(stem.back()) != ports.npos;
}

}  // namespace

std::string windowsNameProblem(std::u16string_view name) {
  const auto said = [name](std::string_view problem) {
    return Formats::sentence(problem, Formats::quoted(Formats::toUtf8(name)));
  };
  constexpr std::u16string_view forbidden = u"<>:\"|?*/\\";
  const auto isForbidden = [forbidden](char16_t unit) { return unit < u' ' || forbidden.find(unit) != forbidden.npos; };
  if (std::any_of(name.begin(), name.end(), isForbidden))
    return said(Formats::sentenceTemplate("the name {1} has a character that names cannot have; choose another name."));
  if (name.ends_with(u'.') || name.ends_with(u' '))
    return said(Formats::sentenceTemplate("the name {1} ends with a dot or a space; choose another name."));
  if (isDevice(name)) return said(Formats::sentenceTemplate("the name {1} stands for a device; choose another name."));
  return {};
}

}  // namespace Files
