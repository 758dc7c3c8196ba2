// Pages of help, in HTML: help/TOPIC.html in a package's content, once for all languages with "$IDS_NAME;" references,
// or in a language's folder.
#pragma once

#include "host/chrome/strings.h"

#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// "Details...", "詳細(S)..." and "鏡像(I)" without what only a control needs.
std::u16string_view labelAsText(std::u16string_view label);

// The address of a topic's page: in chrome://PACKAGE/locale/FILE.chm, FILE is a folder with a page per topic. A page in
// the language's folder takes precedence over the one for all. Other addresses are pages themselves.
std::u16string helpPage(const ChromeFolders& chrome, const std::string& locale, std::u16string_view url,
                        std::u16string_view topic);

// The page at an address, in UTF-8, with the texts of its references: labels as a page of text has them. Nothing when
// there is no such page.
std::optional<std::string> readHelp(const ChromeFolders& chrome, const StringTables& strings, std::u16string_view url);

}  // namespace Refhost
