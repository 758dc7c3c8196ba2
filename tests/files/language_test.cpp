// Sentences in the language of the process.
#include "files/language.h"
#include "formats/sentences.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Formats::CatalogueReader;
using Formats::sentence;

class Sentences : public testing::Test {
 protected:
  ~Sentences() override { Formats::language().speak({}); }

  static void speak(const std::string& catalogue) {
    Formats::language().speak([catalogue] { return catalogue; });
  }

  const std::string german = "# A comment.\nmsgid \"\"\nmsgstr \"Language: de\\n\"\n\n"
                             "msgid \"{1} has no page {2}.\"\nmsgstr \"Die Seite {2} \"\n\"fehlt in {1}.\"\n\n"
                             "msgid \"\\\"{1}\\\"\"\nmsgstr \"„{1}“\"\n\n"
                             "msgid \"Not translated: {1}\"\nmsgstr \"\"\n";
};

TEST_F(Sentences, AreEnglishWithoutACatalogue) {
  EXPECT_EQ(sentence("{1} has no page {2}.", "a.pdf", 7), "a.pdf has no page 7.");
  EXPECT_EQ(Formats::quoted("a"), "\"a\"");
}

TEST_F(Sentences, AreThoseOfTheCatalogue) {
  speak(german);
  EXPECT_EQ(sentence("{1} has no page {2}.", "a.pdf", 7), "Die Seite 7 fehlt in a.pdf.");
  EXPECT_EQ(Formats::quoted("a"), "„a“");
}

TEST_F(Sentences, WithoutATranslationAreEnglish) {
  speak(german);
  EXPECT_EQ(sentence("Unknown to all."), "Unknown to all.");
  EXPECT_EQ(sentence("Not translated: {1}", "a"), "Not translated: a");
}

TEST_F(Sentences, KeepPlaceholdersWithinArguments) {
  EXPECT_EQ(sentence("{1} and {2}", "{2}", "{1}"), "{2} and {1}");
  EXPECT_EQ(sentence("{1} and {3}", "a"), "a and {3}");
}

TEST_F(Sentences, AreEnglishAgainAfterASwitch) {
  speak(german);
  EXPECT_EQ(Formats::quoted("a"), "„a“");
  Formats::language().speak({});
  EXPECT_EQ(Formats::quoted("a"), "\"a\"");
}

TEST_F(Sentences, ReadTheirCatalogueOnceAndWhenTheyAreMade) {
  int reads = 0;
  Formats::language().speak([&] {
    ++reads;
    return german;
  });
  EXPECT_EQ(reads, 0);
  EXPECT_EQ(Formats::quoted("a"), "„a“");
  EXPECT_EQ(Formats::quoted("b"), "„b“");
  EXPECT_EQ(reads, 1);
}

TEST_F(Sentences, OfAFailureToReadTheCatalogueAreEnglish) {
  std::string told;
  Formats::language().speak([&] {
    told = Formats::quoted("a");
    return std::string();
  });
  EXPECT_EQ(sentence("Hello."), "Hello.");
  EXPECT_EQ(told, "\"a\"");
}

TEST_F(Sentences, AreKnownInEnglishWithTheSentencesInThem) {
  speak(german);
  const std::string made = sentence("{1} has no page {2}.", Formats::quoted("a.pdf"), 7);
  EXPECT_EQ(made, "Die Seite 7 fehlt in „a.pdf“.");
  EXPECT_EQ(Formats::inEnglish(made), "\"a.pdf\" has no page 7.");
  EXPECT_EQ(Formats::inEnglish("Of somebody else."), "Of somebody else.");
}

TEST_F(Sentences, AreForgottenInEnglishAfterManyOthers) {
  speak(german);
  const std::string made = Formats::quoted("the first");
  for (int i = 0; i < 1000; ++i) Formats::quoted(std::to_string(i));
  EXPECT_EQ(Formats::inEnglish(made), made);
  EXPECT_EQ(Formats::inEnglish("„999“"), "\"999\"");
}

TEST_F(Sentences, OfADamagedCatalogueAreEnglish) {
  for (const char* damaged : {
           "msgid \"a\"\n",                                           // no translation
           "msgid \"a\"\nmsgid \"b\"\nmsgstr \"c\"\n",                // the same
           "msgid \"a\"\nmsgstr \"b\"\nmsgid \"a\"\nmsgstr \"b\"\n",  // twice
           "msgid \"{1}\"\nmsgstr \"b\"\n",                           // a placeholder is lost
           "msgid \"a\"\nmsgstr \"{1}\"\n",                           // a placeholder too many
           "msgstr \"b\"\n",                                          // no template
           "msgid \"a\"\nmsgstr \"b\"\nmsgstr \"c\"\n",               // two translations
           "\"a\"\n",
           "msgid a\nmsgstr b\n",
           "msgid \"a\"\nmsgstr \"b\n",  // quotation marks
           "msgid \"a\"\nmsgstr \"b\" c\n",
           "msgid \"a\"\nmsgstr \"b\"c\"\n",
           "msgid \"a\"\nmsgstr \"\\\"\n",
           "msgid \"a\"\nmsgstr \"\\x41\"\n",
           "msgid \"a\"\nmsgstr \"",
           "something else\n",
       })
    EXPECT_EQ(CatalogueReader::read(damaged), std::nullopt) << damaged;
  speak("msgid \"a\"\nmsgstr \"b\"\nsomething else\n");
  EXPECT_EQ(sentence("a"), "a");
}

TEST_F(Sentences, OfACatalogueMayHaveAnyLineEnding) {
  const auto read = CatalogueReader::read("msgid \"a\"\r\nmsgstr \"b\\n\\\"\\\\\"");
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, (Formats::Catalogue{{"a", "b\n\"\\"}}));
}

TEST_F(Sentences, AreSpokenInTheLocalesOfTheProduct) {
  EXPECT_EQ(Files::spokenLocales(), (std::vector<std::string>{"de-DE", "en-US", "fr-FR", "ja-JP", "zh-CN", "zh-TW"}));
  const std::vector<std::pair<const char*, const char*>> quotes = {{"de-DE", "„a“"},   {"fr-FR", "« a »"},
                                                                   {"ja-JP", "「a」"}, {"zh-CN", "“a”"},
                                                                   {"zh-TW", "「a」"}, {"en-US", "\"a\""}};
  for (const auto& [locale, shown] : quotes) {
    Files::speak(locale);
    EXPECT_EQ(Formats::quoted("a"), shown) << locale;
  }
}

TEST_F(Sentences, OfAnUnknownLocaleAreEnglish) {
  for (const char* locale : {"pt-BR", "", "../sentences/de-DE", "de-DE.po"}) {
    Files::speak(locale);
    EXPECT_EQ(Formats::quoted("a"), "\"a\"") << locale;
  }
}

}  // namespace
