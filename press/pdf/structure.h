#pragma once

#include "press/pages/content.h"

namespace Press {

// Redirects the document's structure tree from the page's content to this form, which contains it unchanged. Leaves a
// structure that is unreadable or too large unchanged; printing does not need it.
void moveStructure(QPDF& pdf, PageContent& content, QPDFObjectHandle page, QPDFObjectHandle form);

}  // namespace Press
