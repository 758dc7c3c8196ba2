#include "tests/script/scheduler.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <sstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

// The minimal description of a printer. Its page has no margins, so that pages keep their size.
constexpr const char* minimalDescription = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "TEST.PPD"
*Manufacturer: "Test"
*Product: "(Test)"
*ModelName: "Test"
*ShortNickName: "Test"
*NickName: "Test"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*OpenUI *PageSize/Page Size: PickOne
*DefaultPageSize: A4
*PageSize A4/A4: "<</PageSize[595 842]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*DefaultPageRegion: A4
*PageRegion A4/A4: "<</PageSize[595 842]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "0 0 595 842"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
)ppd";

// An unused port of the loopback interface.
int freePort() {
  const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in name = {};
  name.sin_family = AF_INET;
  name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof name;
  auto* const generic = reinterpret_cast<sockaddr*>(&name);
  const bool isBound = bind(handle, generic, size) == 0 && getsockname(handle, generic, &size) == 0;
  close(handle);
  if (!isBound) throw std::runtime_error("the loopback has no free port");
  return ntohs(name.sin_port);
}

void makeExecutable(const fs::path& file) {
  fs::permissions(file, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read |
                            fs::perms::others_exec);
}

}  // namespace

Scheduler::Scheduler(const fs::path& place) : folder(place), address("127.0.0.1:" + std::to_string(freePort())) {
  for (const char* name : {"bin/filter", "bin/backend", "cups/ppd", "spool", "cache", "run", "tmp", "log", "etc/kiln",
                           "opt/kiln/bin", "opt/kiln/share/kiln"})
    fs::create_directories(folder / name);
  fs::permissions(temporary(), fs::perms::all | fs::perms::sticky_bit);

  const fs::path kiln = folder / "opt" / "kiln";
  for (const char* file : {KILN, PLUGIN_FILE}) fs::copy(file, kiln / "bin" / fs::path(file).filename());
  fs::copy(fs::canonical(KILN_RESOURCES), kiln / "share" / "kiln", fs::copy_options::recursive);
  installKiln("");

  fs::create_symlink("/usr/lib/cups/daemon", folder / "bin" / "daemon");
  fs::create_symlink("/usr/lib/cups/filter/pdftopdf", folder / "bin" / "filter" / "pdftopdf");
  writeConfiguration();
  process.emplace(std::vector<std::string>{"/usr/sbin/cupsd", "-f", "-c", (folder / "cupsd.conf").string(), "-s",
                                           (folder / "cups-files.conf").string()},
                  "/dev/null", folder / "log" / "out", folder / "log" / "err");
  const bool answers = waitUntil([&] { return client("lpstat", {"-r"}).find("is running") != std::string::npos; });
  if (!answers) throw std::runtime_error("the scheduler does not start:\n" + log());
}

Scheduler::~Scheduler() {
  process->signal(SIGTERM);
  process->wait();
}

void Scheduler::writeConfiguration() {
  const std::string place = folder.string();
  writeFile(folder / "cups-files.conf", "ServerRoot " + place + "/cups\nServerBin " + place + "/bin\nRequestRoot " +
                                            place + "/spool\nCacheDir " + place + "/cache\nStateDir " + place +
                                            "/run\nTempDir " + place + "/tmp\nAccessLog " + place +
                                            "/log/access\nErrorLog " + place + "/log/error\nPageLog " + place +
                                            "/log/page\nFileDevice Yes\nSetEnv ASAN_OPTIONS detect_leaks=0\n");
  writeFile(folder / "cupsd.conf", "Listen " + address + R"(
LogLevel debug
Browsing No
WebInterface No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow from 127.0.0.1
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow from 127.0.0.1
  </Limit>
</Policy>
)");
}

void Scheduler::installFilter(const std::string& name, const std::string& script) {
  const fs::path file = folder / "bin" / "filter" / name;
  writeFile(file, "#!/bin/sh\n" + script + '\n');
  makeExecutable(file);
}

void Scheduler::installKiln(const std::string& options) {
  installFilter("kiln", "exec " + (folder / "opt" / "kiln" / "bin" / "kiln").string() + " filter --tickets " +
                            tickets().string() + " --queues " + queues().string() + ' ' + options + " \"$@\"");
}

void Scheduler::addQueue(const std::string& name, const std::string& lines) {
  addQueueWith(name, minimalDescription + lines);
}

void Scheduler::addQueueWith(const std::string& name, const std::string& content) {
  std::vector<std::string> words = {"-p", name, "-E", "-v", "file://" + (folder / (name + ".pdf")).string()};
  const fs::path ppd = folder / (name + ".ppd");
  if (!content.empty()) {
    writeFile(ppd, content);
    words.insert(words.end(), {"-P", ppd.string()});
  }
  client("lpadmin", words);
}

std::string Scheduler::description(const std::string& queue) const {
  return readFile(folder / "cups" / "ppd" / (queue + ".ppd"));
}

void Scheduler::send(const std::string& queue, const fs::path& job, const std::vector<std::string>& words) {
  std::vector<std::string> all = {"-d", queue};
  all.insert(all.end(), words.begin(), words.end());
  all.push_back(job.string());
  const std::string said = client("lp", all);
  if (said.find("request id is") == std::string::npos) throw std::runtime_error("the job is not taken: " + said);
}

std::string Scheduler::client(const std::string& program, std::vector<std::string> words) {
  // Not the user who runs the test, whose settings would be used.
  words.insert(words.begin(), {"-h", address, "-U", "somebody"});
  const Outcome outcome = runProgram(program, words, "", {"HOME=" + folder.string()});
  return outcome.out + outcome.err;
}

std::string Scheduler::printed(const std::string& queue) {
  const bool isDone = waitUntil([&] { return client("lpstat", {"-o", queue}).empty(); });
  if (!isDone) throw std::runtime_error("the job does not end:\n" + log());
  return readFile(folder / (queue + ".pdf"));
}

std::string Scheduler::log() const {
  std::string log = readFile(folder / "log" / "err");
  std::istringstream lines(readFile(folder / "log" / "error"));
  for (std::string line; std::getline(lines, line);)
    if (line.find("[Job ") != line.npos) log += line + '\n';
  return log;
}

std::string Scheduler::pageLog() const { return readFile(folder / "log" / "page"); }
