#pragma once

#include "press/page_content.h"

namespace Press {

/// Has the document's structure find what it describes of the page's content in this form, which the content has been
/// put into as it is. A structure that cannot be read, or is too much, stays as it is; on paper nothing is seen of it.
void moveStructure(QPDF& pdf, PageContent& content, QPDFObjectHandle page, QPDFObjectHandle form);

}  // namespace Press
