// Runs work once for each operation of a disk, which fails.
#pragma once

#include "tests/files/failing_disk.h"

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

// The real file system without flushes, which take time and matter only when the power fails.
class UnflushedDisk final : public ForwardingDisk {
 public:
  std::unique_ptr<File> create(const Path& temporary, const Path& target) override {
    return std::make_unique<UnflushedFile>(disk.create(temporary, target));
  }
  void syncFolder(const Path&) override {}

 private:
  class UnflushedFile final : public File {
   public:
    explicit UnflushedFile(std::unique_ptr<File> trueFile) : file(std::move(trueFile)) {}
    void write(std::string_view bytes) override { file->write(bytes); }
    void sync() override {}
    void close() override { file->close(); }

   private:
    std::unique_ptr<File> file;
  };
};

// One failing operation, and how.
struct Fault {
  int operation;
  bool isLasting;
  std::errc reason;

  friend std::ostream& operator<<(std::ostream& out, const Fault& fault) {
    return out << "operation " << fault.operation << (fault.isLasting ? " and all later ones: " : ": ")
               << std::make_error_code(fault.reason).message();
  }
};

// Calls `attempt` with a disk and a fault until no operation is left to fail, for a passing and for a lasting fault.
// Returns how many faults there were. `attempt` may reset the disk's `operations` where the faults are to begin.
template <class Attempt>
int forEveryFault(const Attempt& attempt, std::errc reason = std::errc::io_error) {
  constexpr int most = 2000;
  int faults = 0;
  for (const bool isLasting : {false, true})
    for (int operation = 1; operation < most; ++operation) {
      UnflushedDisk unflushed;
      FailingDisk disk(unflushed);
      disk.reason = reason;
      const Fault fault{operation, isLasting, reason};
      const auto arm = [&disk, fault] {
        disk.operations = 0;
        disk.failing = fault.operation;
        disk.isLasting = fault.isLasting;
      };
      attempt(disk, arm, fault);
      if (disk.operations < operation) break;
      ++faults;
    }
  return faults;
}

// Runs the work; the sentence of its failure, empty when it succeeds.
template <class Work>
std::string failureOf(const Work& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    return *failure.what() == '\0' ? "?" : failure.what();
  }
  return {};
}
