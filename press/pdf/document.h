#pragma once

#include "press/pdf/qpdf.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace Press {

// A page with its inherited attributes. Missing entries are null.
struct PageEntry {
  QPDFObjectHandle page;  // a dictionary
  QPDFObjectHandle resources;
  QPDFObjectHandle mediaBox;
  QPDFObjectHandle cropBox;
  QPDFObjectHandle rotate;
};

// An open job.
struct Document {
  std::unique_ptr<QPDF> pdf;

  // In printing order, at least one. A page that the page tree lists twice appears twice.
  std::vector<PageEntry> pages;
};

// Opens a job for printing. Throws Error when the file is missing, not a PDF, damaged beyond repair,
// password-protected, not allowed to be printed, or without pages.
Document openDocument(const std::filesystem::path& file);

}  // namespace Press
