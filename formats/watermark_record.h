// A watermark record: an element with a text field per child. A watermark file is a document of them, each named by its
// id.
#pragma once

#include "formats/names.h"

#include <string_view>

namespace Formats {

// The file name in every folder.
inline constexpr Name watermarkFileName = u"ZVeffect.xml";

namespace Field {
inline constexpr Name label = u"label";          // the text that is printed
inline constexpr Name stylename = u"stylename";  // the name in the list
inline constexpr Name fontname = u"fontname";
inline constexpr Name fontsize = u"fontsize";  // points
inline constexpr Name fontstyle = u"fontstyle";
inline constexpr Name colour = u"colour";        // "#" and six hexadecimal digits
inline constexpr Name angle = u"angle";          // degrees, counter-clockwise
inline constexpr Name positionX = u"positionX";  // "L", "C" or "R"
inline constexpr Name positionY = u"positionY";  // "U", "C" or "L"
inline constexpr Name printStyle = u"printStyle";
inline constexpr Name transparency = u"transparency";  // contains the field intensity
inline constexpr Name intensity = u"intensity";        // per cent
inline constexpr Name value = u"value";                // the record's id
inline constexpr Name downloaded = u"downloaded";
inline constexpr Name defaultSetting = u"DefaultSetting";  // contains the fields that the editor restores

// In memory only: the file that the record belongs to, and its id and name in that file when they differ.
inline constexpr Name sourceFile = u"SourceFile";
inline constexpr Name origId = u"OrigId";
inline constexpr Name origName = u"OrigName";
}  // namespace Field

namespace PrintStyle {
inline constexpr Name solid = u"Solid";
inline constexpr Name outline = u"Outline";
inline constexpr Name transparency = u"Transparency";
}  // namespace PrintStyle

namespace FontStyle {
inline constexpr Name regular = u"Regular";
inline constexpr Name bold = u"Bold";
inline constexpr Name italic = u"Italic";
inline constexpr Name boldItalic = u"BoldItalic";
}  // namespace FontStyle

// The id of the NoneRecord: no watermark.
inline constexpr Name noneId = u"0";

// The suffix of the id of a downloaded record.
inline constexpr Name downloadedEnding = u"_G";

// The start of the ids that are made for the user's watermarks.
inline constexpr Name madeIdStart = u"WM_";

// A record's id in its file, wherever a file is read: its field `value`; without one, or with the NoneRecord's, the
// name of its element, which in a written file is the id, with the suffix if it was downloaded.
inline std::u16string_view idInFile(std::u16string_view element, std::u16string_view value) {
  if (!value.empty() && value != noneId) return value;
  return element.substr(0, element.size() - (element.ends_with(downloadedEnding) ? downloadedEnding.size() : 0));
}

// Whether a record may have the name: it must not be empty, or the NoneRecord's.
inline bool isUsableName(std::u16string_view stylename) { return !stylename.empty() && stylename != Token::none; }

}  // namespace Formats
