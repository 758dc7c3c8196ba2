// A watermark record: a document node with a text field per child.
#pragma once

#include "effect/vocabulary.h"
#include "kiln/host.h"

#include <string>

namespace Effect {

using Node = Kiln::SmartPtr<Kiln::Dom::INode>;

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

// An element without a parent. Throws std::bad_alloc when the host is out of memory.
Node newElement(Kiln::Host& host, Name name);

// A field's text; empty when the record has no such field.
Kiln::WString fieldText(Kiln::Dom::INode& record, Name field);
void setField(Kiln::Dom::INode& record, Name field, Kiln::WStringView text);
bool hasField(Kiln::Dom::INode& record, Name field);
bool isDownloaded(Kiln::Dom::INode& record);

// Whether the store accepts the name: it must not be empty, or "None", which is the NoneRecord's.
bool isUsableName(std::u16string_view stylename);

// The font face of a record without one; it covers the characters of the user's language.
Name defaultFace(Kiln::Host& host);

// The NoneRecord, also the template of new records; it belongs to the file at `sourceFile`.
Node noneRecord(Kiln::Host& host, Kiln::WStringView sourceFile);

// A copy of a record as stored in its file: with the id and name that it has there, without the in-memory fields.
Node asWritten(Kiln::Dom::INode& record);

// Removes the in-memory fields.
void stripMemoryFields(Kiln::Dom::INode& record);

}  // namespace Effect
