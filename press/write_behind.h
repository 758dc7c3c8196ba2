#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "press/whole_file.h"

namespace Press {

/// Writes to a file from a thread of its own: while the system takes one piece, the next is being made.
class WriteBehind {
 public:
  /// The file outlives this object, and is nobody else's until it is complete.
  explicit WriteBehind(WholeFile& destination) : file(destination) {}
  /// What still waits is not written any more.
  ~WriteBehind();
  WriteBehind(const WriteBehind&) = delete;
  WriteBehind& operator=(const WriteBehind&) = delete;

  /// The bytes are copied. Returns before they are written, unless too many wait already; a failure is kept.
  void write(const char* data, std::size_t size);
  /// The last call: returns when everything is written, and throws the first failure, a `std::system_error`.
  void complete();

 private:
  using Piece = std::string;

  void handOver(std::size_t most);
  void run();
  void end();

  WholeFile& file;
  Piece current;
  std::thread writer;  ///< Runs from the first full piece on. It shares what follows, under the lock.
  std::mutex lock;
  std::condition_variable changed;
  std::vector<Piece> waiting;  ///< In order.
  std::vector<Piece> spare;
  std::size_t pieces = 1;  ///< All that there are.
  bool isEnding = false;
  std::exception_ptr failure;
};

}  // namespace Press
