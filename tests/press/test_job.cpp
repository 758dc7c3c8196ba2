#include "tests/press/test_job.h"

#include "press/pdf/bytes.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

fs::path newFolder() {
  std::string name = (fs::temp_directory_path() / "press-test-XXXXXX").string();
  if (!::mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
  return name;
}

}  // namespace

TestFolder::TestFolder() : path(newFolder()) {}

TestFolder::~TestFolder() {
  std::error_code ignored;
  fs::permissions(path, fs::perms::owner_all, ignored);
  fs::remove_all(path, ignored);
}

std::vector<std::string> TestFolder::names() const {
  std::vector<std::string> found;
  for (const fs::directory_entry& entry : fs::directory_iterator(path))
    found.push_back(entry.path().filename().string());
  std::sort(found.begin(), found.end());
  return found;
}

std::string TestJob::bytes() const {
  using Press::reference;
  Press::PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R " + catalog + " >>");
  pdf.add("<< /Type /Pages /Count 1 /Kids [3 0 R] " + parent + " >>");
  const int sheet = pdf.reserve();
  for (const std::string& object : objects) pdf.add(object);
  std::string streams;
  for (const std::string& content : contents) streams += reference(pdf.addStream("", content)) + " ";
  std::string body = "<< /Type /Page /Parent 2 0 R " + boxes + " " + page;
  if (contents.size() == 1) body += " /Contents " + streams;
  if (contents.size() > 1) body += " /Contents [" + streams + "]";
  if (hasResources) body += " /Resources << " + resources + " >>";
  pdf.set(sheet, body + " >>");
  return pdf.finish(1);
}

std::string streamObject(const std::string& entries, const std::string& data) {
  return "<< /Length " + std::to_string(data.size()) + " " + entries + " >>\nstream\n" + data + "\nendstream";
}

std::string read(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + file.string());
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

void write(const fs::path& file, const std::string& bytes) {
  std::ofstream stream(file, std::ios::binary);
  stream << bytes;
  if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

std::string printed(const std::string& job, const Press::Effects& effects) {
  const TestFolder folder;
  write(folder / "in.pdf", job);
  Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects);
  return read(folder / "out.pdf");
}

CommandResult run(const std::string& command) {
  FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + command);
  CommandResult result{0, {}};
  std::array<char, 4096> piece;
  while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), pipe))
    result.output.append(piece.data(), count);
  const int status = ::pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

std::string complaints(const std::string& pdf) {
  const TestFolder folder;
  write(folder / "file.pdf", pdf);
  const CommandResult result = run("qpdf --check '" + (folder / "file.pdf").string() + "'");
  return result.status == 0 ? "" : result.output;
}

std::string plainText(const std::string& pdf) {
  const TestFolder folder;
  write(folder / "file.pdf", pdf);
  const CommandResult result = run("qpdf --qdf --no-original-object-ids '" + (folder / "file.pdf").string() + "' -");
  if (result.status != 0) throw std::runtime_error(result.output);
  return result.output;
}
