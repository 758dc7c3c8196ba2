#pragma once

#include "press/pdf/qpdf.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace Press {

// An input source that caches the part of the file around the last position, since the library reads a few bytes at a
// time, dozens of times per object.
class InputFile : public InputSource {
 public:
  explicit InputFile(const std::filesystem::path& path);

  qpdf_offset_t findAndSkipNextEOL() override;
  const std::string& getName() const override { return name; }
  qpdf_offset_t tell() override { return position; }
  void seek(qpdf_offset_t offset, int whence) override;
  void rewind() override { position = 0; }
  std::size_t read(char* buffer, std::size_t length) override;
  void unreadCh(char) override { --position; }

 private:
  std::string_view kept();

  std::string name;
  std::ifstream file;
  qpdf_offset_t size = 0;
  qpdf_offset_t position = 0;
  std::string piece;
  qpdf_offset_t pieceStart = 0;
};

}  // namespace Press
