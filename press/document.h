#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include <qpdf/QPDF.hh>

namespace Press {

/// A page as the document holds it, with what it inherits. An entry that the page has nowhere is null.
struct PageEntry {
  QPDFObjectHandle page;  ///< A dictionary.
  QPDFObjectHandle resources;
  QPDFObjectHandle mediaBox;
  QPDFObjectHandle cropBox;
  QPDFObjectHandle rotate;
};

/// An open job.
struct Document {
  std::unique_ptr<QPDF> pdf;
  std::vector<PageEntry> pages;  ///< In printing order, at least one. A page that is named twice stands here twice.
};

/// Opens a job for printing. Throws `Error` when the file is missing, is no PDF, is damaged beyond repair,
/// needs a password, may not be printed, or has no pages.
Document openDocument(const std::filesystem::path& file);

}  // namespace Press
