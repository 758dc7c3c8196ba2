// Files to make overlays of: documents, and pictures such as logos.
#pragma once

#include "files/temporary_folder.h"
#include "formats/papers.h"

#include <filesystem>
#include <memory>

namespace Press {

// The page that a picture is put on, in the middle.
struct PicturePage {
  Formats::Paper paper = Formats::paperOf({});

  // Whether the picture is made as large as the paper. Otherwise it has its own size, unless the paper is smaller.
  bool fills = false;
};

// A form as a PDF file.
class FormFile {
 public:
  // A PDF stays where it is; a picture is put on a page in a temporary file. Throws Error for a picture that cannot be
  // read.
  FormFile(const std::filesystem::path& given, const PicturePage& page);

  const std::filesystem::path& pdf() const { return file; }

  // Whether it was made of a picture.
  bool isPicture() const { return folder != nullptr; }

 private:
  std::filesystem::path file;
  std::unique_ptr<Files::TemporaryFolder> folder;
};

}  // namespace Press
