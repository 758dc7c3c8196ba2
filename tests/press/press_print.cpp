// Prints a job with effects, with the arguments of the kiln command: press_print IN OUT [--set PROPERTY=VALUE]...

#include "press/job/print.h"

#include <iostream>
#include <map>
#include <string>

int main(int count, char** arguments) {
  std::map<std::string, std::string> properties;
  bool understood = count >= 3 && count % 2 == 1;
  for (int index = 3; understood && index < count; index += 2) {
    const std::string pair = arguments[index + 1];
    const std::size_t equals = pair.find('=');
    understood = arguments[index] == std::string("--set") && equals != std::string::npos;
    if (understood) properties[pair.substr(0, equals)] = pair.substr(equals + 1);
  }
  if (!understood) {
    std::cerr << "Usage: press_print IN.pdf OUT.pdf [--set PROPERTY=VALUE]...\n";
    return 2;
  }
  try {
    Press::printPdf(arguments[1], arguments[2], Press::effectsFromProperties(properties));
  } catch (const Press::Error& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
}
