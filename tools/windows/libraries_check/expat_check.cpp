// Fails unless expat was built with all features that the host's readers rely on. Each can be disabled without an
// error: files are then read as empty, or hostile ones are not rejected.

#include <expat.h>

#include <CLI/Version.hpp>
#include <nlohmann/json_fwd.hpp>

#include <cstdio>
#include <string>
#include <string_view>

namespace {

int failures = 0;

void expect(bool held, const char* fact) {
  if (!held) {
    ++failures;
    std::printf("expat: not so: %s\n", fact);
  }
}

bool hasFeature(XML_FeatureEnum wanted) {
  for (const XML_Feature* feature = XML_GetFeatureList(); feature->feature != XML_FEATURE_END; ++feature)
    if (feature->feature == wanted) return true;
  return false;
}

void XMLCALL appendText(void* text, const XML_Char* data, int length) {
  static_cast<std::string*>(text)->append(data, static_cast<std::size_t>(length));
}

void XMLCALL appendName(void* text, const XML_Char* name, const XML_Char**) {
  static_cast<std::string*>(text)->append(name).append("|");
}

/// A document's character data, or the error.
std::string textOf(std::string_view document) {
  std::string text;
  XML_Parser parser = XML_ParserCreate(nullptr);
  XML_SetUserData(parser, &text);
  XML_SetCharacterDataHandler(parser, appendText);
  XML_SetParamEntityParsing(parser, XML_PARAM_ENTITY_PARSING_ALWAYS);
  if (XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE) != XML_STATUS_OK)
    text = XML_ErrorString(XML_GetErrorCode(parser));
  XML_ParserFree(parser);
  return text;
}

std::string elementNames(std::string_view document) {
  std::string names;
  XML_Parser parser = XML_ParserCreateNS(nullptr, '#');
  XML_SetUserData(parser, &names);
  XML_SetStartElementHandler(parser, appendName);
  if (XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE) != XML_STATUS_OK)
    names = XML_ErrorString(XML_GetErrorCode(parser));
  XML_ParserFree(parser);
  return names;
}

/// Thirty entities, each doubling the previous one: a gigabyte of text unless rejected.
std::string amplifyingDocument() {
  std::string document = "<!DOCTYPE r [<!ENTITY e0 'x'>";
  for (int level = 1; level <= 30; ++level) {
    const std::string below = "&e" + std::to_string(level - 1) + ";";
    document += "<!ENTITY e" + std::to_string(level) + " '" + below + below + "'>";
  }
  return document + "]><r>&e30;</r>";
}

}  // namespace

int main() {
  expect(hasFeature(XML_FEATURE_DTD), "it was built with XML_DTD");
  expect(hasFeature(XML_FEATURE_NS), "it was built with XML_NS");
  expect(hasFeature(XML_FEATURE_BILLION_LAUGHS_ATTACK_PROTECTION_MAXIMUM_AMPLIFICATION_DEFAULT),
         "it limits amplification");

  expect(textOf("<!DOCTYPE r [<!ENTITY a 'one'><!ENTITY b '&a; two'>]><r>&b;</r>") == "one two",
         "general entities are expanded");
  expect(textOf("<!DOCTYPE r [<!ENTITY a 'first'><!ENTITY a 'second'>]><r>&a;</r>") == "first",
         "the first declaration of an entity wins");
  expect(textOf("<!DOCTYPE r [<!ENTITY % p \"<!ENTITY a 'inner'>\">%p;]><r>&a;</r>") == "inner",
         "parameter entities are expanded");
  expect(elementNames("<p:r xmlns:p='urn:x'><p:s/></p:r>") == "urn:x#r|urn:x#s|", "namespaces are resolved");
  expect(textOf(amplifyingDocument()) == XML_ErrorString(XML_ERROR_AMPLIFICATION_LIMIT_BREACH),
         "amplification is refused");
  return failures == 0 ? 0 : 1;
}
