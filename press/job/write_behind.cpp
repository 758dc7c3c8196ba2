#include "press/job/write_behind.h"

#include <algorithm>
#include <utility>

namespace Press {
namespace {

constexpr std::size_t pieceSize = std::size_t{64} << 10;
constexpr std::size_t fewPieces = 2;
constexpr std::size_t mostPieces = 128;

}  // namespace

WriteBehind::~WriteBehind() {
  {
    const std::lock_guard hold(lock);
    waiting.clear();
  }
  end();
}

void WriteBehind::write(const char* data, std::size_t size) {
  // A picture is written at once, and should be finished while the next one is read.
  const std::size_t most = std::min(fewPieces + size / pieceSize, mostPieces);
  while (size > 0) {
    current.reserve(pieceSize);
    const std::size_t taken = std::min(size, pieceSize - current.size());
    current.append(data, taken);
    data += taken;
    size -= taken;
    if (current.size() == pieceSize) handOver(most);
  }
}

void WriteBehind::complete() {
  handOver(fewPieces);
  end();
  if (failure) std::rethrow_exception(failure);
}

// Passes the current piece to the thread and takes an empty one; waits for one when `most` exist already.
void WriteBehind::handOver(std::size_t most) {
  if (!writer.joinable()) {
    waiting.reserve(mostPieces);  // so that the thread does not allocate, which would create a separate heap arena
    spare.reserve(mostPieces);
    writer = std::thread([this] { run(); });
  }
  std::unique_lock hold(lock);
  waiting.push_back(std::move(current));
  changed.notify_all();
  changed.wait(hold, [&] { return !spare.empty() || pieces < most; });
  if (spare.empty()) {
    ++pieces;
    current = Piece();
  } else {
    current = std::move(spare.back());
    spare.pop_back();
  }
}

// Writes pieces until there are no more.
void WriteBehind::run() {
  std::unique_lock hold(lock);
  for (;;) {
    changed.wait(hold, [this] { return isEnding || !waiting.empty(); });
    if (waiting.empty()) return;
    Piece piece = std::move(waiting.front());
    waiting.erase(waiting.begin());
    if (!failure) {
      hold.unlock();
      std::exception_ptr problem;
      try {
        file.write(piece);
      } catch (...) {
        problem = std::current_exception();
      }
      hold.lock();
      failure = problem;
    }
    piece.clear();
    spare.push_back(std::move(piece));
    changed.notify_all();
  }
}

void WriteBehind::end() {
  if (!writer.joinable()) return;
  {
    const std::lock_guard hold(lock);
    isEnding = true;
    changed.notify_all();
  }
  writer.join();
}

}  // namespace Press
