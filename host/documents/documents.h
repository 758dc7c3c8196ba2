// Document nodes as XML, and back.
//
// Written documents are UTF-8, one element a line, indented; the same nodes give the same bytes. What is read gives the
// same nodes again: names, texts, children in their order, namespaces, prefixes and attributes.
#pragma once

#include "host/documents/node.h"
#include "host/documents/xml.h"
#include "kiln/services.h"

#include <string>
#include <string_view>

namespace Refhost {

// Whether what XML cannot carry is written in a form of its own: each such 16-bit unit as _xHHHH_, in names and in
// texts (host/documents/escaping.h). Where it is off, it is refused.
enum class NameEscaping { off, on };

// Throws std::runtime_error, one sentence, for what cannot be written; with escaping, everything can but namespaces and
// prefixes that are none.
std::string writeXml(const Node& root, NameEscaping escaping = NameEscaping::off);

// Whitespace around the children of an element is formatting and left out; in an element without children it is text.
// Comments and processing instructions are left out. Throws std::runtime_error: one sentence with source and line.
Kiln::SmartPtr<Node> readXml(std::string_view bytes, const std::string& source, const XmlLimits& limits,
                             NameEscaping escaping = NameEscaping::off);

// What a plug-in's documents may have: a million elements below the root, which take a second or two.
inline constexpr XmlLimits documentLimits{std::size_t{32} << 20, 64, 1'000'001};

// Documents with escaping: every name and text of a node can be written and comes back.
Kiln::SmartPtr<Kiln::Services::Documents> makeDocuments();

}  // namespace Refhost
