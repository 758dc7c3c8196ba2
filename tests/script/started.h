// Programs that run beside a test.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// A program that runs beside the test; ended with the object.
class Started {
 public:
  // Standard input comes from the file `in`, what it says goes into the files `out` and `err`. `environment` is added
  // to the test's own.
  Started(const std::vector<std::string>& words, const std::filesystem::path& in, const std::filesystem::path& out,
          const std::filesystem::path& err, const std::vector<std::string>& environment = {});
  ~Started();
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;

  void signal(int number) const;

  // The process.
  int id() const { return process; }

  // Its exit status, -1 when a signal ended it; waits for it.
  int wait();

 private:
  int process;
};

// Waits until `holds` does; false when it has not for minutes, which no machine is too busy for.
bool waitUntil(const std::function<bool()>& holds);
