#pragma once

#include "press/pages/content.h"
#include "press/text/outlines.h"

namespace Press {

// The watermark as a form in the document, in the units of its outlines.
QPDFObjectHandle watermarkForm(QPDF& pdf, const Watermark& watermark, const Outlines& outlines);

}  // namespace Press
