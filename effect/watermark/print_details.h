// The properties that the print path reads the selected watermark from.
#pragma once

#include "effect/watermark/record.h"
#include "kiln/property.h"

namespace Effect {

// Writes the record's fields in the form that the print path reads; the NoneRecord has no text. Properties that the
// model does not have are skipped.
void writePrintDetails(Kiln::Host& host, Kiln::Property& model, Kiln::Dom::INode& record, bool isNoneRecord);

}  // namespace Effect
