// Document nodes to XML and back.
//
// Written documents are UTF-8, one element per line, indented; equal nodes give equal bytes. Reading returns the same
// nodes: names, texts, children in order, namespaces, prefixes and attributes.
#pragma once

#include "host/documents/node.h"
#include "host/documents/xml.h"
#include "kiln/services.h"

#include <string>
#include <string_view>

namespace Refhost {

// Whether characters that XML cannot represent are escaped: each such 16-bit unit as _xHHHH_, in names and in texts
// (host/documents/escaping.h). When off, they are rejected.
enum class NameEscaping { off, on };

// Throws std::runtime_error, one sentence, for nodes that cannot be written; with escaping only for invalid namespaces
// and prefixes.
std::string writeXml(const Node& root, NameEscaping escaping = NameEscaping::off);

// White space between child elements is formatting and dropped; in an element without children it is text. Comments and
// processing instructions are dropped. Throws std::runtime_error: one sentence with source and line.
Kiln::SmartPtr<Node> readXml(std::string_view bytes, const std::string& source, const XmlLimits& limits,
                             NameEscaping escaping = NameEscaping::off);

// The limits of a plug-in's documents: a million elements below the root, which take a second or two.
inline constexpr XmlLimits documentLimits{std::size_t{32} << 20, 64, 1'000'001};

// Documents with escaping: every name and text of a node survives a round trip.
Kiln::SmartPtr<Kiln::Services::Documents> makeDocuments();

}  // namespace Refhost
