// The PDF library: include this in place of its headers.
#pragma once

// std::shared_ptr in place of the library's own pointers.
#define POINTERHOLDER_TRANSITION 4

// JSON.hh has a vector of an incomplete type, which Clang rejects as C++20. A declaration is all that the other headers
// need of it.
#define JSON_HH
class JSON;

#include <qpdf/InputSource.hh>
#include <qpdf/Pipeline.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFAnnotationObjectHelper.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFFormFieldObjectHelper.hh>
#include <qpdf/QPDFNumberTreeObjectHelper.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageLabelDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <qpdf/QUtil.hh>
