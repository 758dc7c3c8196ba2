// Jobs with a password: the window asks for it.
#include "press/job/print.h"
#include "press/job/sample.h"
#include "tests/window/answers.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QProcess>

#include <fstream>

namespace Window {
namespace {

class PasswordTest : public testing::Test {
 protected:
  PasswordTest() {
    const QString plain = folder.filePath("plain.pdf");
    std::ofstream(plain.toStdString(), std::ios::binary) << Press::samplePdf();
    EXPECT_EQ(QProcess::execute("qpdf", {"--encrypt", "sesame", "owner", "256", "--", plain, locked}), 0);
  }

  static std::function<void(QWidget&)> password(const QString& text) {
    return [text](QWidget& dialog) {
      EXPECT_EQ(dialog.findChild<QLineEdit*>()->echoMode(), QLineEdit::Password);
      Testing::name(text)(dialog);
    };
  }

  QString title() const { return open.window->windowTitle(); }
  QString pageFailure() const { return open.window->pageFailure(); }

  const QTemporaryDir folder;
  const QString locked = folder.filePath("locked.pdf");
  Testing::OpenWindow open;
  Testing::Answers answers{open};
};

TEST_F(PasswordTest, OpensTheJob) {
  answers.choose("OPEN", {Testing::file(locked), password("sesame")});
  EXPECT_THAT(title().toStdString(), testing::StartsWith("locked.pdf"));
  EXPECT_EQ(pageFailure(), QString());
  const QString out = folder.filePath("out.pdf");
  answers.choose("PRINT", {Testing::button("Print"), Testing::file(out)});
  EXPECT_EQ(Press::Job(out.toStdString()).pageCount(), 4);
}

TEST_F(PasswordTest, ThatIsWrongIsAskedForAgain) {
  QString said;
  const auto readAndType = [&said](QWidget& dialog) {
    said = dialog.findChild<QLabel*>("wrongPassword")->text();
    password("sesame")(dialog);
  };
  answers.choose("OPEN", {Testing::file(locked), password("barley"), readAndType});
  EXPECT_EQ(said, "This is not its password: try again.");
  EXPECT_EQ(pageFailure(), QString());
}

TEST_F(PasswordTest, ThatIsNotGivenLeavesTheFormerJob) {
  const QString before = title();
  const QImage page = open.page();
  answers.choose("OPEN", {Testing::file(locked), Testing::escape});
  EXPECT_EQ(title(), before);
  EXPECT_EQ(open.page(), page);
}

TEST_F(PasswordTest, OfTheCommandLineOpensTheJob) {
  Testing::OpenWindow opened([&](Request& request) {
    request.document = locked.toStdString();
    request.password = "sesame";
  });
  EXPECT_EQ(opened.window->pageFailure(), QString());
}

TEST_F(PasswordTest, ThatTheCommandLineDoesNotHaveIsAskedFor) {
  Testing::OpenWindow opened([&](Request& request) { request.document = locked.toStdString(); });
  EXPECT_THAT(opened.window->pageFailure().toStdString(), testing::HasSubstr("needs a password"));
  Testing::Answers(opened).during([&] { opened.window->unlockJob(); }, {password("sesame")});
  EXPECT_EQ(opened.window->pageFailure(), QString());
}

TEST_F(PasswordTest, IsNotRecorded) {
  const QString script = folder.filePath("session.drive");
  {
    Testing::OpenWindow opened([&](Request& request) { request.record = script.toStdString(); });
    Testing::Answers there(opened);
    there.choose("OPEN", {Testing::file(locked), password("sesame")});
    EXPECT_EQ(opened.window->pageFailure(), QString());
  }
  std::ifstream file(script.toStdString());
  const std::string recorded(std::istreambuf_iterator<char>(file), {});
  EXPECT_THAT(recorded, testing::Not(testing::HasSubstr("sesame")));
  EXPECT_THAT(recorded, testing::Not(testing::IsEmpty()));
}

}  // namespace
}  // namespace Window
