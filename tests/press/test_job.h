#pragma once

#include "press/job/effects.h"
#include "press/job/print.h"

#include <filesystem>
#include <string>
#include <vector>

// A temporary folder for one test.
class TestFolder {
 public:
  TestFolder();
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return path / name; }

  // The sorted names of all entries.
  std::vector<std::string> names() const;

  const std::filesystem::path path;
};

// An asymmetric drawing in whole pixels at 72 dpi.
inline const std::string marks = "1 0 0 rg 20 250 100 20 re f 20 180 20 70 re f 0 0.5 0 rg 40 210 40 15 re f "
                                 "0 0 1 rg 150 10 30 60 re f 0.5 g 100 120 50 30 re f\n";

// A one-page job as raw PDF. The catalog is object 1, the page tree 2, the page 3; `objects` are numbered from 4, and
// the content streams follow.
struct TestJob {
  std::string boxes = "/MediaBox [0 0 200 300]";
  std::vector<std::string> contents = {marks};
  std::string resources = {};  // entries of the page's resources
  std::string page = {};       // additional entries of the page
  std::string parent = {};     // inherited entries in the page tree
  std::string catalog = {};    // additional entries of the catalog
  std::vector<std::string> objects = {};
  bool hasResources = true;

  std::string bytes() const;
};

// The text of a stream object, for `TestJob::objects`.
std::string streamObject(const std::string& entries, const std::string& data);

std::string read(const std::filesystem::path& file);
void write(const std::filesystem::path& file, const std::string& bytes);

// The job printed with the effects, through files.
std::string printed(const std::string& job, const Press::Effects& effects);

// A command's output and exit status.
struct CommandResult {
  int status;
  std::string output;
};
CommandResult run(const std::string& command);

// The messages of `qpdf --check`; empty for a valid file.
std::string complaints(const std::string& pdf);

// The PDF in a form with all objects readable as text.
std::string plainText(const std::string& pdf);
