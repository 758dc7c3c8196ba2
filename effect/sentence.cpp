#include "effect/sentence.h"

namespace Effect {
std::string sentenceOf(const Kiln::Exception& problem) {
  std::string sentence = problem.what();
  if (!sentence.ends_with('.')) sentence += '.';
  return sentence;
}

std::string sentenceOfBlocking(const Kiln::Exception& problem) {
  return sentenceOf(problem) + " It is not written over: mend it or move it elsewhere, and open the preferences again.";
}

}  // namespace Effect
