// kiln print --ticket: a job printed with the settings of a PrintTicket.
#include "tests/script/process.h"

#include <gmock/gmock.h>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class PrintByTicket : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(runKiln({"sample", job.string()}).status, 0); }

  Outcome withHome(std::vector<std::string> words) {
    words.insert(words.end(), {"--home", (testFolder() / "home").string()});
    return runKiln(words);
  }

  const path job = testFolder() / "job.pdf";
  const path ticket = testFolder() / "ticket.xml";
  const path byTicket = testFolder() / "ticket.pdf";
  const path bySetting = testFolder() / "setting.pdf";
};

TEST_F(PrintByTicket, IsAsPrintingByTheSettingsThemselves) {
  const auto written = withHome({"ticket", "--set", "NegativeImage=Negative"});
  ASSERT_EQ(written.status, 0) << written.err;
  EXPECT_THAT(written.out, HasSubstr("psk:Negative"));
  writeFile(ticket, written.out);
  ASSERT_EQ(withHome({"print", job.string(), byTicket.string(), "--ticket", ticket.string()}).status, 0);
  ASSERT_EQ(withHome({"print", job.string(), bySetting.string(), "--set", "NegativeImage=Negative"}).status, 0);
  EXPECT_TRUE(samePages(readFile(byTicket), readFile(bySetting)));
}

TEST_F(PrintByTicket, PrintsNothingByATicketThatIsNone) {
  writeFile(byTicket, "as it was");
  writeFile(ticket, "<ticket>\n<open>");
  const auto outcome = withHome({"print", job.string(), byTicket.string(), "--ticket", ticket.string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, AllOf(StartsWith("kiln: " + ticket.string() + ":2: "),
                                 EndsWith("; write the ticket anew with \"kiln ticket\".\n")));
  EXPECT_EQ(readFile(byTicket), "as it was");
}

TEST_F(PrintByTicket, PrintsNothingByATicketThatIsNotThere) {
  const auto outcome = withHome({"print", job.string(), byTicket.string(), "--ticket", ticket.string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(ticket.string()));
  EXPECT_FALSE(std::filesystem::exists(byTicket));
}

TEST_F(PrintByTicket, DrawsAPageOfTheJob) {
  const path picture = testFolder() / "page.png";
  ASSERT_EQ(runKiln({"picture", job.string(), picture.string(), "--page", "2"}).status, 0);
  EXPECT_THAT(readFile(picture), StartsWith("\x89PNG"));
  EXPECT_EQ(runKiln({"picture", job.string(), picture.string(), "--page", "99"}).status, 1);
}

}  // namespace
