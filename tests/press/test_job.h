#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "press/effects.h"
#include "press/print.h"

/// A folder for one test, removed with all that is in it.
class TestFolder {
 public:
  TestFolder();
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return path / name; }
  /// The names of everything in it, in order.
  std::vector<std::string> names() const;

  const std::filesystem::path path;
};

/// Drawing that looks different from every side, in whole pixels at 72 dpi.
inline const std::string marks = "1 0 0 rg 20 250 100 20 re f 20 180 20 70 re f 0 0.5 0 rg 40 210 40 15 re f "
                                 "0 0 1 rg 150 10 30 60 re f 0.5 g 100 120 50 30 re f\n";

/// A job of one page, in the raw bytes of a PDF. The catalog is object 1, the page tree 2, the page 3; `objects` are
/// numbered from 4, and the content streams come after them.
struct TestJob {
  std::string boxes = "/MediaBox [0 0 200 300]";
  std::vector<std::string> contents = {marks};
  std::string resources = {};  ///< What stands inside the page's resources.
  std::string page = {};       ///< Further entries of the page.
  std::string parent = {};     ///< Entries of the page tree, which the page inherits.
  std::string catalog = {};    ///< Further entries of the catalog.
  std::vector<std::string> objects = {};
  bool hasResources = true;

  std::string bytes() const;
};

/// The text of a stream object, for `TestJob::objects`.
std::string streamObject(const std::string& entries, const std::string& data);

std::string read(const std::filesystem::path& file);
void write(const std::filesystem::path& file, const std::string& bytes);

/// The job with the effects printed on it, by way of files.
std::string printed(const std::string& job, const Press::Effects& effects);

/// What a command answers: its standard output and standard error, and its exit status.
struct CommandResult {
  int status;
  std::string output;
};
CommandResult run(const std::string& command);

/// What `qpdf --check` complains of; empty when the file is sound.
std::string complaints(const std::string& pdf);

/// The PDF in a form in which every object can be read as text.
std::string plainText(const std::string& pdf);
