// Jobs that open with a password alone, or whose author restricts them.
#include "press/job/plan.h"
#include "press/job/print.h"
#include "press/job/sample.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class Passwords : public testing::Test {
 protected:
  void SetUp() override { write(folder / "job.pdf", Press::samplePdf()); }

  // Encrypts the job; the options are the user's and the owner's password and what the user may do.
  void lock(const std::string& options) {
    ASSERT_EQ(run("qpdf --allow-weak-crypto --encrypt " + options + " -- '" + (folder / "job.pdf").string() + "' '" +
                  locked.string() + "'")
                  .status,
              0);
  }

  bool isPrintedEncrypted() const { return read(out).find("/Encrypt") != std::string::npos; }

  const TestFolder folder;
  const fs::path locked = folder / "locked.pdf";
  const fs::path out = folder / "out.pdf";
};

TEST_F(Passwords, OpenAJobWhichIsPrintedWithoutEncryption) {
  for (const char* bits : {"128", "256"}) {
    lock(std::string("s\u00e9same owner ") + bits);
    for (const char* password : {"s\u00e9same", "owner"}) {
      Press::printPdf({locked, password}, out, {});
      EXPECT_EQ(Press::Job(out).pageCount(), Press::Job(folder / "job.pdf").pageCount()) << bits;
      EXPECT_FALSE(isPrintedEncrypted());
      write(folder / "page.pdf", Press::printPage({locked, password}, 1, {}));
      EXPECT_EQ(Press::Job(folder / "page.pdf").pageCount(), 1);
    }
  }
}

TEST_F(Passwords, ThatAreMissingOrWrongAreToldApartAndNotTold) {
  lock("secret owner 256");
  for (const char* password : {"", "sesame"}) {
    try {
      Press::planPrint({locked, password}, {});
      ADD_FAILURE() << "opens with \"" << password << '"';
    } catch (const Press::PasswordNeeded& needed) {
      EXPECT_EQ(needed.isWrong(), *password != 0);
      EXPECT_THAT(needed.what(), HasSubstr(*password == 0 ? "needs a password" : "does not open with this password"));
      EXPECT_THAT(needed.what(), Not(HasSubstr("sesame")));
    }
  }
}

TEST_F(Passwords, ThatAJobDoesNotNeedAreIgnored) {
  EXPECT_EQ(Press::Job({folder / "job.pdf", "needless"}).pageCount(), Press::Job(folder / "job.pdf").pageCount());
  lock("'' owner 256");
  Press::printPdf({locked, "needless"}, out, {});
  EXPECT_TRUE(isPrintedEncrypted());
}

TEST_F(Passwords, OfTheOwnerPrintWhatOthersMayNot) {
  for (const char* user : {"''", "secret"}) {
    lock(std::string(user) + " owner 256 --print=none");
    Press::printPdf({locked, "owner"}, out, {});
    EXPECT_FALSE(isPrintedEncrypted());
  }
  try {
    Press::printPdf({locked, "secret"}, out, {});
    ADD_FAILURE() << "its author allows nobody else to print";
  } catch (const Press::Error& error) {
    EXPECT_THAT(error.what(), HasSubstr("locked.pdf\" may not be printed"));
  }
}

}  // namespace
