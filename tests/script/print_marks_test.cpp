// Watermarks and overlays on the command line, and their description by --dry-run.
#include "tests/script/printed_job.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

// A field of an overlay index: UTF-16, padded with zeros.
std::string field(const std::string& text, std::size_t bytes) {
  std::string units;
  for (const char unit : text) units += {unit, '\0'};
  units.resize(bytes, '\0');
  return units;
}

class PrintMarks : public PrintedJob {
 protected:
  void SetUp() override {
    PrintedJob::SetUp();
    putOverlays({"Letterhead", "Footer", "A:1"});
  }

  // Creates overlays of the user, each the sample job's first page.
  void putOverlays(const std::vector<std::string>& names) const {
    const path folder = home / "profile" / "overlays";
    fs::create_directories(folder);
    std::string index;
    for (std::size_t i = 0; i < names.size(); ++i) {
      const std::string number = std::to_string(10000 + i);
      index += field(names[i], 128) + field(number + ".opa", 26);
      fs::copy_file(job, folder / (number + ".opa"));
    }
    writeFile(folder / "ovlNmFl.flo", index);
  }

  // The output of --dry-run, which must not write anything.
  std::string said(std::vector<std::string> words) {
    words.push_back("--dry-run");
    const auto outcome = print(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_FALSE(fs::exists(out));
    return outcome.out;
  }

  void expectRefusal(const std::vector<std::string>& words, const std::string& part) {
    const auto outcome = print(words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(StartsWith("kiln: "), HasSubstr(part)));
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
    EXPECT_FALSE(fs::exists(out));
  }
};

TEST_F(PrintMarks, WatermarkIsChosenByItsName) {
  EXPECT_THAT(
      said({"--watermark", "Draft"}),
      StartsWith("The job has 4 pages.\nThe watermark \"Draft\" goes over the content of every page: Arial bold, "
                 "108 points, #808080, turned by 315 degrees clockwise, 60 percent transparent.\n"));
  ASSERT_EQ(print({}).status, 0);
  const std::string plain = readFile(out);
  ASSERT_EQ(print({"--watermark", "Draft"}).status, 0);
  EXPECT_FALSE(samePages(readFile(out), plain));
}

TEST_F(PrintMarks, NeedNoHomeThatCanBeWrittenWhereNothingOfItIsAskedFor) {
  const std::string mirror = said({"--set", "MirrorImage=MirrorImage"});
  const path filled = testFolder() / "filled";
  fs::create_directories(filled);
  writeFile(filled / "user", "a file");
  for (const path& unusable : {job / "home", filled}) {
    const auto outcome =
        runKiln({"print", job.string(), "--dry-run", "--set", "MirrorImage=MirrorImage", "--home", unusable.string()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, mirror);
    EXPECT_THAT(outcome.err, AllOf(StartsWith("kiln: "), HasSubstr("ZVeffect.xml cannot be written")));
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
  }
}

TEST_F(PrintMarks, AreThereInAHomeThatCannotBeWritten) {
  const path filled = job / "home";
  const auto outcome =
      runKiln({"print", job.string(), out.string(), "--watermark", "Draft", "--home", filled.string()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(readFile(out), HasSubstr("/KilnW Do"));
  EXPECT_THAT(runKiln({"watermark", "list", "--home", filled.string()}).out, HasSubstr("Draft\n"));
  const auto added = runKiln({"watermark", "add", "Mine", "--home", filled.string()});
  EXPECT_EQ(added.status, 1);
  EXPECT_THAT(added.err,
              HasSubstr("user/ZVeffect.xml cannot be written, because " + job.string() + " cannot be created: "));
}

TEST_F(PrintMarks, SettingsOfTheWatermarkGoWithIt) {
  EXPECT_THAT(said({"--watermark", "Draft", "--set", "FirstPageOnly=True"}), HasSubstr("the content of page 1: "));
}

TEST_F(PrintMarks, SettingsOfAWatermarkThatIsOffTellHowToChooseOne) {
  for (const std::string setting : {"WatermarkSel=1", "WatermarkText=Draft"}) {
    const auto outcome = print({"--set", setting});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "kiln: The watermark is off, so \"" + setting.substr(0, setting.find('=')) +
                               "\" has no effect: choose a watermark with --watermark NAME, or turn it on with --set "
                               "Watermark=Watermark.\n");
  }
}

TEST_F(PrintMarks, SettingsOfAWatermarkThatIsOnOrTurnedOffTellNothing) {
  const std::vector<std::vector<std::string>> settled = {
      {"--watermark", "Draft", "--set", "WatermarkText=Mine"},
      {"--set", "WatermarkSel=1", "--set", "Watermark=Watermark"},
      {"--set", "WatermarkSel=1", "--set", "Watermark=None"},
      {"--set", "WatermarkSel=0"},
      {"--set", "Watermark-Color=Black"},
  };
  for (const auto& words : settled) {
    const auto outcome = print(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, Not(HasSubstr("watermark is off")));
  }
}

TEST_F(PrintMarks, UnknownWatermarkIsRefusedWithThoseThereAre) {
  expectRefusal({"--watermark", "Draught"}, "\"Draft\", ");
}

TEST_F(PrintMarks, MisspeltNameIsAskedAbout) {
  expectRefusal({"--watermark", "Darft"}, "Did you mean \"Draft\"?");
  expectRefusal({"--set", "MirrorImage=MirorImage"}, "Did you mean \"MirrorImage\"?");
  expectRefusal({"--set", "MirorImage=None"}, "did you mean \"MirrorImage\"?");
}

TEST_F(PrintMarks, EmptyNameIsNoNameInsteadOfNoMark) {
  expectRefusal({"--watermark", ""}, "There is no watermark \"\"; there are ");
  expectRefusal({"--overlay", ""}, "There is no overlay \"\"; there are ");
  for (const char* option : {"--ticket", "--profile"}) {
    const auto outcome = print({option, ""});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, StartsWith(std::string("kiln: ") + option + ": a file has to be named; "));
    EXPECT_FALSE(fs::exists(out));
  }
}

TEST_F(PrintMarks, OverlayIsChosenByItsName) {
  EXPECT_EQ(said({"--overlay", "Letterhead"}),
            "The job has 4 pages.\nThe overlay \"Letterhead\" goes under the content of every page.\n");
  ASSERT_EQ(print({}).status, 0);
  const std::string plain = readFile(out);
  ASSERT_EQ(print({"--overlay", "Letterhead"}).status, 0);
  EXPECT_FALSE(samePages(readFile(out), plain));
}

TEST_F(PrintMarks, OverlayGoesOnThePagesThatAreNamed) {
  EXPECT_EQ(said({"--overlay", "Letterhead:1,3-"}),
            "The job has 4 pages.\nThe overlay \"Letterhead\" goes under the content of pages 1, 3-4.\n");
  EXPECT_THAT(said({"--overlay", "Letterhead:Even"}), HasSubstr("of pages 2, 4.\n"));
  EXPECT_THAT(said({"--overlay", "Letterhead:9"}), HasSubstr("of no page.\n"));
}

TEST_F(PrintMarks, SeveralOverlaysAreEachOnTheirPages) {
  EXPECT_EQ(said({"--overlay", "Letterhead:1", "--overlay", "Footer", "--overlay", "Letterhead:Even"}),
            "The job has 4 pages.\n"
            "The overlay \"Footer\" goes under the content of every page.\n"
            "The overlay \"Letterhead\" goes under the content of pages 2, 4.\n"
            "The overlay \"Letterhead\" goes under the content of page 1.\n"
            "Overlays by page: 1-2, 4: Footer, Letterhead; 3: Footer.\n");
}

TEST_F(PrintMarks, SeveralOverlaysOfOneFileNameAreToldApart) {
  const path local = home / "localdata" / "a" / "overlays";
  fs::create_directories(local);
  writeFile(local / "ovlNmFl.flo", field("Local", 128) + field("10000.opa", 26));
  fs::copy_file(job, local / "10000.opa");
  EXPECT_THAT(said({"--overlay", "Letterhead:1", "--overlay", "Local:2-"}),
              HasSubstr("Overlays by page: 1: Letterhead; 2-4: Local.\n"));
}

// What a user can enter as a list of pages never stops the job.
TEST_F(PrintMarks, ListThatNamesNoPageIsTold) {
  const auto saved = [this](const std::string& letterhead, const std::string& footer) {
    const std::string folder = (home / "profile" / "overlays").string() + "/";
    return std::vector<std::string>{
        "--set",
        "OverlaySourceFileName=" + folder + "10000.opa;" + letterhead + "$" + folder + "10001.opa;" + footer + "$",
        "--set",
        "OverlayImage=MultipleOverlayImage",
        "--set",
        "OverlaySel=Multiple"};
  };
  for (const std::string list : {"-", ",", "--2,", "0"}) {
    fs::remove(out);
    const auto outcome = print(saved(list, "1,2--3"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "kiln: For the overlay \"Letterhead\", \"" + list +
                               "\" names no page: write All, Even, Odd, or numbers such as 1,3,5-9.\n"
                               "kiln: For the overlay \"Footer\", \"2--3\" names no page: write All, Even, Odd, or "
                               "numbers such as 1,3,5-9.\n");
    EXPECT_TRUE(fs::exists(out));
  }
  fs::remove(out);
  EXPECT_THAT(said(saved("-", "1")), HasSubstr("For the overlay \"Letterhead\", \"-\" names no page"));
}

// Several overlays were accepted, then one chosen, then several again: its entry has no pages.
TEST_F(PrintMarks, OverlayWithoutPagesIsTold) {
  const std::string file = (home / "profile" / "overlays" / "10000.opa").string();
  const auto outcome = print({"--set", "OverlaySourceFileName=" + file + ";$", "--set",
                              "OverlayImage=MultipleOverlayImage", "--set", "OverlaySel=Multiple"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err,
            "kiln: For the overlay \"Letterhead\", no page is named: write All, Even, Odd, or numbers such "
            "as 1,3,5-9.\n");
  EXPECT_TRUE(fs::exists(out));
}

// A ticket does not tell one overlay from several where its file has the separators of the list in its name.
TEST_F(PrintMarks, OneOverlayInAnyFolderGoesThroughATicket) {
  const path strange = testFolder() / "users$;1" / "home";
  fs::create_directories(strange.parent_path());
  fs::rename(home, strange);
  const auto at = [&](std::vector<std::string> words) {
    words.insert(words.end(), {"--home", strange.string()});
    return runKiln(words);
  };
  const path ticket = testFolder() / "ticket.xml";
  writeFile(ticket, at({"ticket", "--overlay", "Letterhead"}).out);
  const auto outcome = at({"print", job.string(), "--dry-run", "--ticket", ticket.string()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("The overlay \"Letterhead\" goes under the content of every page.\n"));

  const auto several = at({"print", job.string(), out.string(), "--overlay", "Letterhead:1", "--overlay", "Footer:2"});
  EXPECT_EQ(several.status, 1);
  EXPECT_THAT(several.err, HasSubstr("several overlays cannot lie in a folder that has \"$\" or \";\" in its name"));
}

TEST_F(PrintMarks, NameWithAColonCountsWhereThereIsOne) {
  EXPECT_THAT(said({"--overlay", "A:1"}), HasSubstr("\"A:1\" goes under the content of every page.\n"));
  EXPECT_THAT(said({"--overlay", "A:1:2"}), HasSubstr("\"A:1\" goes under the content of page 2.\n"));
}

TEST_F(PrintMarks, OverlayNamedLikeAnEntryOfTheListIsThatOverlay) {
  EXPECT_THAT(said({"--overlay", "None"}), HasSubstr("No effect changes them.\n"));
  fs::remove_all(home);
  putOverlays({"Letterhead", "None", "Multiple"});
  for (const std::string name : {"None", "Multiple"}) {
    EXPECT_THAT(said({"--overlay", name}), HasSubstr('"' + name + "\" goes under the content of every page.\n"));
    EXPECT_THAT(said({"--overlay", name + ":2"}), HasSubstr('"' + name + "\" goes under the content of page 2.\n"));
  }
}

TEST_F(PrintMarks, OverlaysGoOnTopOfATicketsAndUnderTheSettings) {
  const path ticket = testFolder() / "ticket.xml";
  writeFile(ticket, runKiln({"ticket", "--set", "MirrorImage=MirrorImage", "--set", "OverlayLayering=Overlay", "--home",
                             home.string()})
                        .out);
  EXPECT_EQ(said({"--ticket", ticket.string(), "--overlay", "Footer:2"}),
            "The job has 4 pages.\nThe overlay \"Footer\" goes over the content of page 2.\n"
            "Every page is mirrored, left and right exchanged.\n");
}

TEST_F(PrintMarks, ProfileBringsItsOwnSettingsAndMarks) {
  writeFile(home / "profile" / "settings-standard.json",
            R"({"values": {"MirrorImage": "MirrorImage", "OverlaySel": "10001.opa", "OverlayImage": "OverlayImage",
                "OverlaySourceFileName": ")" +
                (home / "profile" / "overlays" / "10001.opa").string() + "\"}}");
  const path profile = testFolder() / "profile.zip";
  ASSERT_EQ(runKiln({"profile", "export", profile.string(), "--home", home.string()}).status, 0);
  fs::remove_all(home);
  EXPECT_EQ(said({"--profile", profile.string()}),
            "The job has 4 pages.\nThe overlay \"Footer\" goes under the content of every page.\n"
            "Every page is mirrored, left and right exchanged.\n");
  EXPECT_EQ(print({"--profile", profile.string(), "--overlay", "Letterhead"}).status, 0);
  EXPECT_FALSE(fs::exists(home)) << "the user's own home is touched";
}

TEST_F(PrintMarks, ProfileBringsItsModelUnlessAnotherIsNamed) {
  const path profile = testFolder() / "profile.zip";
  ASSERT_EQ(runKiln({"profile", "export", profile.string(), "--model", "kvt", "--home", home.string()}).status, 0);
  const std::vector<std::string> forbidden = {"--profile", profile.string(), "--set",
                                              "Nin1=2in1", "--set",          "Rotate180=Rotate180"};
  expectRefusal(forbidden, "\"kvt\"");
  std::vector<std::string> allowed = forbidden;
  allowed.insert(allowed.end(), {"--model", "standard"});
  EXPECT_EQ(print(allowed).status, 0);
}

TEST_F(PrintMarks, ProfileOfAModelThatIsNotHereAsksForOne) {
  const path model = testFolder() / "mine.xml", profile = testFolder() / "profile.zip";
  writeFile(model, "<model name=\"../mine\" label=\"Mine\" extends=\"standard\"/>");
  fs::copy_file(path(KILN_RESOURCES) / "models" / "standard.xml", testFolder() / "standard.xml");
  ASSERT_EQ(runKiln({"profile", "export", profile.string(), "--model", model.string(), "--home", home.string()}).status,
            0);
  expectRefusal({"--profile", profile.string()}, "The profile is of the model \"../mine\"");
  EXPECT_EQ(print({"--profile", profile.string(), "--model", model.string()}).status, 0);
}

TEST_F(PrintMarks, ProfileThatIsNoneIsASentence) { expectRefusal({"--profile", job.string()}, "job.pdf"); }

TEST_F(PrintMarks, UnknownOverlayIsRefusedWithThoseThereAre) {
  expectRefusal({"--overlay", "Leterhead"}, "\"A:1\", \"Footer\", \"Letterhead\".");
  expectRefusal({"--overlay", "Multiple"}, "\"Multiple\"");
  fs::remove_all(home / "profile" / "overlays");
  expectRefusal({"--overlay", "Letterhead"}, "there are none yet");
}

TEST_F(PrintMarks, PagesThatAreNoneAreRefused) {
  expectRefusal({"--overlay", "Letterhead:even"}, "\"even\"");
  expectRefusal({"--overlay", "Letterhead:"}, "\"\"");
  expectRefusal({"--overlay", "Letterhead:1--2"}, "\"1--2\"");
}

TEST_F(PrintMarks, OverlayWhoseFileIsDamagedStopsThePrintAndTheDryRun) {
  writeFile(home / "profile" / "overlays" / "10000.opa", "no PDF");
  expectRefusal({"--overlay", "Letterhead"}, "10000.opa");
  expectRefusal({"--overlay", "Letterhead", "--dry-run"}, "10000.opa");
}

TEST_F(PrintMarks, DryRunSaysWhatHappensToThePagesInOrder) {
  EXPECT_EQ(said({}), "The job has 4 pages.\nNo effect changes them.\n");
  EXPECT_EQ(said({"--set", "NegativeImage=Negative", "--set", "MirrorImage=MirrorImage", "--set", "Nin1=2in1"}),
            "The job has 4 pages.\n"
            "2 pages go on a sheet; that makes 2 sheets.\n"
            "Every sheet is mirrored, left and right exchanged.\n"
            "Every sheet is printed in negative.\n");
  EXPECT_EQ(said({"--set", "Rotate180ForA3LD=Rotate180"}),
            "The job has 4 pages.\nPage 3 is turned half round, as A3 and Ledger are.\n");
  EXPECT_EQ(said({"--set", "Rotate180=Rotate180"}), "The job has 4 pages.\nEvery page is turned half round.\n");
}

TEST_F(PrintMarks, DryRunTellsAWatermarkAsItIsSeen) {
  const auto saidOf = [this](const std::vector<std::string>& settings) {
    std::vector<std::string> words = {"--set", "Watermark=Watermark", "--set", "WatermarkText=Draft"};
    for (const std::string& setting : settings) words.insert(words.end(), {"--set", setting});
    return said(words);
  };
  EXPECT_THAT(saidOf({"WatermarkTextAngle=390"}), HasSubstr(", turned by 30 degrees clockwise.\n"));
  EXPECT_THAT(saidOf({"WatermarkTextAngle=-45"}), HasSubstr(", turned by 315 degrees clockwise.\n"));
  EXPECT_THAT(saidOf({"WatermarkTextAngle=720"}), Not(HasSubstr("turned")));
  EXPECT_THAT(saidOf({}), Not(HasSubstr("at the ")));
  EXPECT_THAT(saidOf({"WatermarkTextWidth=R"}), HasSubstr(", at the right"));
  EXPECT_THAT(saidOf({"WatermarkTextHeight=U"}), HasSubstr(", at the top"));
  EXPECT_THAT(saidOf({"WatermarkTextWidth=L", "WatermarkTextHeight=L"}), HasSubstr(", at the lower left"));
  EXPECT_THAT(saidOf({"WatermarkText=A\r\nB\tC"}), HasSubstr("\"A  B C\""));
  EXPECT_EQ(saidOf({"WatermarkText=   "}),
            "The job has 4 pages.\nThe watermark \"   \" draws nothing: nothing of its text can be seen.\n");
}

TEST_F(PrintMarks, DryRunTellsMarksOfPagesFromMarksOfSheets) {
  const std::vector<std::string> onSheets = {"--set", "Nin1=4in1", "--overlay", "Footer:2-"};
  EXPECT_EQ(said(onSheets), "The job has 4 pages.\n4 pages go on a sheet; that makes 1 sheet.\n"
                            "The overlay \"Footer\" goes under the content of no sheet.\n");
  auto onPages = onSheets;
  onPages.insert(onPages.end(), {"--set", "OverlayOccurance=PerPage"});
  EXPECT_EQ(said(onPages), "The job has 4 pages.\nThe overlay \"Footer\" goes under the content of pages 2-4.\n"
                           "4 pages go on a sheet; that makes 1 sheet.\n");
}

TEST_F(PrintMarks, DryRunCountsThePagesThatAreChosen) {
  EXPECT_EQ(said({"--pages", "2-3", "--overlay", "Footer:1"}),
            "The job has 4 pages, of which pages 2-3 are printed; from here on they count from 1.\n"
            "The overlay \"Footer\" goes under the content of page 1.\n");
  expectRefusal({"--pages", "7-", "--dry-run"}, "none of the chosen pages");
  expectRefusal({"--pages", "seven", "--dry-run"}, "\"seven\"");
}

TEST_F(PrintMarks, DryRunOfAJobThatCannotBePrintedIsASentence) {
  writeFile(job, "This is no PDF.");
  expectRefusal({"--dry-run"}, "job.pdf");
}

}  // namespace
