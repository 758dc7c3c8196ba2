// kiln ticket: exporting settings as a PrintTicket and importing them.
#include "tests/script/process.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class TicketCommand : public testing::Test {
 protected:
  static Outcome withHome(std::vector<std::string> words) {
    words.insert(words.end(), {"--home", (testFolder() / "home").string()});
    return runKiln(words);
  }
};

TEST_F(TicketCommand, WritesTheSettings) {
  const auto written = withHome({"ticket", "--set", "NegativeImage=Negative"});
  ASSERT_EQ(written.status, 0) << written.err;
  EXPECT_THAT(written.out, HasSubstr("psk:Negative"));
}

TEST_F(TicketCommand, LetsASettingGoOverTheTicket) {
  const auto ticket = testFolder() / "ticket.xml";
  writeFile(ticket, withHome({"ticket", "--set", "NegativeImage=Negative"}).out);
  const auto both = withHome({"ticket", "--ticket", ticket.string(), "--set", "NegativeImage=None"});
  EXPECT_EQ(both.out, withHome({"ticket"}).out);
}

TEST_F(TicketCommand, WritesCapabilities) {
  const auto outcome = withHome({"ticket", "--capabilities"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("PrintCapabilities"));
}

}  // namespace
