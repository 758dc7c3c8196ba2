#pragma once

#include "press/pages/annotations.h"
#include "press/pages/content.h"

namespace Press {

// A page as a form: its content and annotations, clipped to the visible area, in the page's units. Null when its
// content cannot be converted.
QPDFObjectHandle pageAsForm(PageContent& content, Annotations& annotations, const PageEntry& entry,
                            const PageShape& shape);

}  // namespace Press
