#include "press/pdf/input_file.h"

#include "formats/sentences.h"
#include "press/error.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace Press {
namespace {

constexpr qpdf_offset_t pieceSize = qpdf_offset_t{64} << 10;

}  // namespace

InputFile::InputFile(const std::filesystem::path& path)
    : name(utf8(path)),
      file(path, std::ios::binary | std::ios::ate) {
  if (!file) throw std::runtime_error(Formats::sentence("it cannot be opened"));
  size = file.tellg();
}

// The cached bytes from the current position on; empty at the end of the file.
std::string_view InputFile::kept() {
  if (position >= size) return {};
  if (position < pieceStart || position >= pieceStart + static_cast<qpdf_offset_t>(piece.size())) {
    pieceStart = position - position % (pieceSize / 2);  // the next read is often slightly before this one
    piece.resize(static_cast<std::size_t>(std::min(pieceSize, size - pieceStart)));
    file.seekg(pieceStart);
    if (!file.read(piece.data(), static_cast<std::streamsize>(piece.size())))
      throw std::runtime_error(Formats::sentence("it cannot be read at {1}", pieceStart));
  }
  return std::string_view(piece).substr(static_cast<std::size_t>(position - pieceStart));
}

qpdf_offset_t InputFile::findAndSkipNextEOL() {
  std::string_view text = kept();
  std::size_t end = 0;
  while (!text.empty() && (end = text.find_first_of("\r\n")) == std::string_view::npos) {
    position += static_cast<qpdf_offset_t>(text.size());
    text = kept();
  }
  if (text.empty()) return position = std::max(position, size);
  position += static_cast<qpdf_offset_t>(end);
  const qpdf_offset_t found = position;
  for (text = kept(); !text.empty() && (text[0] == '\r' || text[0] == '\n'); text = kept()) ++position;
  return found;
}

void InputFile::seek(qpdf_offset_t offset, int whence) {
  const qpdf_offset_t from = whence == SEEK_END ? size : whence == SEEK_CUR ? position : 0;
  if (offset < -from) throw std::runtime_error(Formats::sentence("it refers to a place before its beginning"));
  position = from + offset;
}

std::size_t InputFile::read(char* buffer, std::size_t length) {
  last_offset = position;
  std::size_t done = 0;
  while (done < length) {
    const std::string_view text = kept();
    if (text.empty()) break;
    const std::size_t taken = text.copy(buffer + done, length - done);
    done += taken;
    position += static_cast<qpdf_offset_t>(taken);
  }
  if (done == 0 && length > 0) last_offset = position = size;
  return done;
}

}  // namespace Press
