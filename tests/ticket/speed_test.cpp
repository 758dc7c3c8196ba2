// Costs grow with the size of the input, whatever the input is made of.
#include "tests/support/growth.h"
#include "tests/ticket/ticket_world.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using Testing::growsLinearly;
using Testing::ticketAround;
using Testing::TicketWorld;

constexpr int few = 4000;

// Reads a ticket with that content, and makes the ticket that is then written.
std::function<void()> conversion(const std::string& content) {
  return [world = std::make_shared<TicketWorld>(), ticket = ticketAround(content)] {
    world->load(ticket);
    world->service.document(*world->plugin, *world->model, Kiln::PTLevel::job);
  };
}

std::string repeated(int count, const std::function<std::string(int)>& piece) {
  std::string content;
  for (int i = 0; i < count; ++i) content += piece(i);
  return content;
}

TEST(Speed, GrowsLinearlyWithForeignFeatures) {
  EXPECT_TRUE(growsLinearly(few, [](int count) {
    return conversion(repeated(count, [](int i) {
      return "<psf:Feature name=\"kw:F" + std::to_string(i) + "\"><psf:Option name=\"kw:On\"/></psf:Feature>\n";
    }));
  }));
}

TEST(Speed, GrowsLinearlyWithForeignParameters) {
  EXPECT_TRUE(growsLinearly(few, [](int count) {
    return conversion(repeated(count, [](int i) {
      return "<psf:ParameterInit name=\"psk:P" + std::to_string(i) +
             "\"><psf:Value xsi:type=\"xsd:integer\">1</psf:Value></psf:ParameterInit>\n";
    }));
  }));
}

TEST(Speed, GrowsLinearlyWithPrefixes) {
  EXPECT_TRUE(growsLinearly(few, [](int count) {
    return conversion(repeated(count, [](int i) {
      const std::string prefix = "p" + std::to_string(i);
      return "<psf:Property xmlns:" + prefix + "=\"urn:" + prefix + "\" name=\"" + prefix + ":a\"/>\n";
    }));
  }));
}

TEST(Speed, GrowsLinearlyWithPrefixesOfAKnownFeature) {
  EXPECT_TRUE(growsLinearly(few, [](int count) {
    const std::string declarations =
        repeated(count, [](int i) { return " xmlns:p" + std::to_string(i) + "=\"urn:" + std::to_string(i) + "\""; });
    const std::string children =
        repeated(count, [](int i) { return "<psf:Property name=\"p" + std::to_string(i) + ":a\"/>"; });
    return conversion("<psf:Feature name=\"psk:PageMirrorImage\"" + declarations + "><psf:Option name=\"psk:None\"/>" +
                      children + "</psf:Feature>");
  }));
}

}  // namespace
