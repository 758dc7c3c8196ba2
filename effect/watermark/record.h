// A watermark record: a document node with a text field per child.
#pragma once

#include "effect/vocabulary.h"
#include "formats/watermark_record.h"
#include "kiln/host.h"

#include <string>

namespace Effect {

using Node = Kiln::SmartPtr<Kiln::Dom::INode>;

// An element without a parent. Throws std::bad_alloc when the host is out of memory.
Node newElement(Kiln::Host& host, Name name);

// A field's text; empty when the record has no such field.
Kiln::WString fieldText(Kiln::Dom::INode& record, Name field);
void setField(Kiln::Dom::INode& record, Name field, Kiln::WStringView text);
bool hasField(Kiln::Dom::INode& record, Name field);
bool isDownloaded(Kiln::Dom::INode& record);

// The font face of a record without one; it covers the characters of the user's language.
Name defaultFace(Kiln::Host& host);

// The NoneRecord, also the template of new records; it belongs to the file at `sourceFile`.
Node noneRecord(Kiln::Host& host, Kiln::WStringView sourceFile);

// A copy of a record as stored in its file: with the id and name that it has there, without the in-memory fields.
Node asWritten(Kiln::Dom::INode& record);

// Removes the in-memory fields.
void stripMemoryFields(Kiln::Dom::INode& record);

}  // namespace Effect
