#pragma once

#include "press/document.h"
#include "press/page_rule.h"

namespace Press {

/// Makes these pages, dictionaries with all that they inherit, the only ones of the document that `catalog` leads to.
void setPages(QPDF& pdf, QPDFObjectHandle catalog, const std::vector<QPDFObjectHandle>& pages);

/// Takes every page out of the document that the rule does not name. What led to such a page then leads to nothing; the
/// others keep their labels. False, and nothing has changed, when no page would be left.
bool keepPages(Document& document, const PageRule& rule);

/// Gives a page that stands at several places an object of its own at each, so that they can be printed differently.
void separatePlaces(Document& document);

}  // namespace Press
