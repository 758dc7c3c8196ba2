// Sentences for people: errors, notices and warnings, in the language of whoever reads them.
//
// The English template is the key of its translation. It has placeholders, {1} to {9}, for names and numbers:
//
//   throw Error(Formats::sentence("There is no library {1}.", quoted(file)));
//
// What is written for programs (answers of scripts, properties, log files) is not made here.
#pragma once

#include "formats/catalogue.h"

#include <atomic>
#include <concepts>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace Formats {

// What a process speaks: English, or a catalogue that is read when the first sentence is made. Can be used by several
// threads.
class Language {
 public:
  // Returns the content of a catalogue; empty when it cannot be read.
  using Read = std::function<std::string()>;

  // Speaks the catalogue's language from now on, or English where the catalogue is damaged. English for an empty
  // function.
  void speak(Read newCatalogue) {
    const Turn turn(busy);
    read = std::move(newCatalogue);
    catalogue.clear();
    made.clear();
  }

  std::string make(std::string_view english, std::initializer_list<std::string> arguments) {
    if (isReading) return fill(english, arguments);
    const Turn turn(busy);
    if (read) catalogue = catalogueOf(std::exchange(read, nullptr));
    if (catalogue.empty()) return fill(english, arguments);
    const auto found = catalogue.find(english);
    const std::string sentence = fill(found == catalogue.end() ? english : found->second, arguments);
    std::string original = fill(english, arguments, [this](const std::string& text) { return originalOf(text); });
    if (sentence != original) remember(sentence, std::move(original));
    return sentence;
  }

  std::string english(const std::string& sentence) {
    const Turn turn(busy);
    return originalOf(sentence);
  }

 private:
  class Turn {
   public:
    explicit Turn(std::atomic_flag& flag) : busy(flag) {
      while (busy.test_and_set(std::memory_order_acquire)) std::this_thread::yield();
    }
    ~Turn() { busy.clear(std::memory_order_release); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    std::atomic_flag& busy;
  };

  // A failure to read makes sentences, too, which are English.
  static Catalogue catalogueOf(const Read& reading) {
    struct Mark {
      Mark() { isReading = true; }
      ~Mark() { isReading = false; }
    } const mark;
    return CatalogueReader::read(reading()).value_or(Catalogue());
  }

  static inline thread_local bool isReading = false;

  // Enough for what an action of a user tells.
  static constexpr std::size_t mostRemembered = 200;

  template <class Change = std::identity>
  static std::string fill(std::string_view text, std::initializer_list<std::string> arguments,
                          const Change& change = {}) {
    std::string filled;
    while (!text.empty()) {
      const std::size_t number = placeholderAt(text);
      if (number == 0 || number > arguments.size()) {
        filled += text.front();
        text.remove_prefix(1);
      } else {
        filled += change(arguments.begin()[number - 1]);
        text.remove_prefix(3);
      }
    }
    return filled;
  }

  void remember(std::string sentence, std::string original) {
    made.emplace_back(std::move(sentence), std::move(original));
    if (made.size() > mostRemembered) made.pop_front();
  }

  std::string originalOf(const std::string& sentence) const {
    for (auto each = made.rbegin(); each != made.rend(); ++each)
      if (each->first == sentence) return each->second;
    return sentence;
  }

  // A mutex is not in every standard library for Windows, and nobody holds this long.
  std::atomic_flag busy;
  Read read;
  Catalogue catalogue;
  std::deque<std::pair<std::string, std::string>> made;  // the latest sentences, and each in English
};

// The language of this module. A library that is loaded on demand has one of its own, until it shares its program's.
inline Language*& sharedLanguage() {
  static Language own;
  static Language* shared = &own;
  return shared;
}

inline Language& language() { return *sharedLanguage(); }

inline void shareLanguage(Language& other) { sharedLanguage() = &other; }

namespace Sentences {

inline std::string textOf(std::string_view text) { return std::string(text); }
inline std::string textOf(std::integral auto number) { return std::to_string(number); }

}  // namespace Sentences

// The sentence, or the part of one, in the language of the process.
template <class... Arguments>
std::string sentence(std::string_view english, const Arguments&... arguments) {
  return language().make(english, {Sentences::textOf(arguments)...});
}

// Marks a template that is kept for a later call of sentence(); tools/sentences finds it by this.
constexpr std::string_view sentenceTemplate(std::string_view english) { return english; }

// A name in the language's quotation marks.
inline std::string quoted(std::string_view name) { return sentence("\"{1}\"", name); }

// A sentence that was made here lately, in English: for what programs compare. Any other text unchanged.
inline std::string inEnglish(const std::string& text) { return language().english(text); }

}  // namespace Formats
