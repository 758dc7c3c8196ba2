#pragma once

#include "files/whole_file.h"

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Press {

// Writes to a file in a background thread, so that producing and writing overlap.
class WriteBehind {
 public:
  // `destination` outlives this object, and must not be used otherwise until `complete` returns.
  explicit WriteBehind(Files::PendingFile& destination) : file(destination) {}

  // Discards what is not written yet.
  ~WriteBehind();
  WriteBehind(const WriteBehind&) = delete;
  WriteBehind& operator=(const WriteBehind&) = delete;

  // Copies the bytes. Returns before they are written, unless the queue is full; errors are kept for `complete`.
  void write(const char* data, std::size_t size);

  // Must be the last call: returns when everything is written; throws the first error.
  void complete();

 private:
  using Piece = std::string;

  void handOver(std::size_t most);
  void run();
  void end();

  Files::PendingFile& file;
  Piece current;

  // Started with the first full piece. Shares the members below, guarded by the lock.
  std::thread writer;
  std::mutex lock;
  std::condition_variable changed;
  std::vector<Piece> waiting;  // in order
  std::vector<Piece> spare;
  std::size_t pieces = 1;  // buffers allocated
  bool isEnding = false;
  std::exception_ptr failure;
};

}  // namespace Press
