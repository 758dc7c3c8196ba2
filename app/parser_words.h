// What the parser of the command line says, in the user's language.
#pragma once

#include <string>
#include <string_view>

namespace App {

// One of the parser's English sentences translated; any other text unchanged.
std::string parserSentence(std::string_view english);

}  // namespace App
