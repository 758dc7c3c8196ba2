#pragma once

#include "press/pages/page_list.h"
#include "press/pdf/document.h"

namespace Press {

// Makes these pages, which must include their inherited attributes, the only ones of the document with that catalog.
void setPages(QPDF& pdf, QPDFObjectHandle catalog, const std::vector<QPDFObjectHandle>& pages);

// Removes the pages that the rule does not include. Links to them are nulled; the others keep their labels. Returns
// false, without a change, when no page would remain.
bool keepPages(Document& document, const PageRule& rule);

// Gives a page that occurs several times separate objects, so that each can be printed differently.
void separatePlaces(Document& document);

}  // namespace Press
