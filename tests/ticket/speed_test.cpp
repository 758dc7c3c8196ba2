// Costs grow with the size of the input, whatever the input is made of.
#include "tests/ticket/ticket_world.h"

#include <gtest/gtest.h>

#include <ctime>
#include <functional>

namespace {

using Testing::ticketAround;
using Testing::TicketWorld;

// Of the processor, so that other programs do not count.
template <class Work>
double secondsOf(const Work& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// A read of a ticket with `count` pieces, and the ticket that is then written.
double secondsFor(int count, const std::function<std::string(int)>& piece) {
  std::string content;
  for (int i = 0; i < count; ++i) content += piece(i);
  const std::string ticket = ticketAround(content);
  TicketWorld world;
  return secondsOf([&] {
    world.load(ticket);
    world.service.document(*world.plugin, *world.model, Kiln::PTLevel::job);
  });
}

// Ten times as much takes about ten times as long, and a quadratic step would take a hundred times.
void expectLinear(const std::function<std::string(int)>& piece) {
  secondsFor(1000, piece);
  const double few = secondsFor(4000, piece);
  const double many = secondsFor(40000, piece);
  EXPECT_LT(many, 40 * few);
}

TEST(Speed, GrowsLinearlyWithForeignFeatures) {
  expectLinear([](int i) {
    return "<psf:Feature name=\"kw:F" + std::to_string(i) + "\"><psf:Option name=\"kw:On\"/></psf:Feature>\n";
  });
}

TEST(Speed, GrowsLinearlyWithForeignParameters) {
  expectLinear([](int i) {
    return "<psf:ParameterInit name=\"psk:P" + std::to_string(i) +
           "\"><psf:Value xsi:type=\"xsd:integer\">1</psf:Value></psf:ParameterInit>\n";
  });
}

TEST(Speed, GrowsLinearlyWithPrefixes) {
  expectLinear([](int i) {
    const std::string prefix = "p" + std::to_string(i);
    return "<psf:Property xmlns:" + prefix + "=\"urn:" + prefix + "\" name=\"" + prefix + ":a\"/>\n";
  });
}

TEST(Speed, GrowsLinearlyWithPrefixesOfAKnownFeature) {
  const auto seconds = [](int count) {
    std::string declarations;
    std::string children;
    for (int i = 0; i < count; ++i) {
      declarations += " xmlns:p" + std::to_string(i) + "=\"urn:" + std::to_string(i) + "\"";
      children += "<psf:Property name=\"p" + std::to_string(i) + ":a\"/>";
    }
    const std::string ticket = ticketAround("<psf:Feature name=\"psk:PageMirrorImage\"" + declarations +
                                            "><psf:Option name=\"psk:None\"/>" + children + "</psf:Feature>");
    TicketWorld world;
    return secondsOf([&] {
      world.load(ticket);
      world.service.document(*world.plugin, *world.model, Kiln::PTLevel::job);
    });
  };
  seconds(1000);
  const double few = seconds(4000);
  EXPECT_LT(seconds(40000), 40 * few);
}

}  // namespace
