#pragma once

#include "press/pdf/job_file.h"
#include "press/pdf/qpdf.h"

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

  // Whether a password has opened it, or has allowed its printing. What is written of it is not encrypted: it is the
  // print of someone who has the password, and who may show it to others.
  bool isUnlocked = false;
};

// Opens a job for printing. Throws PasswordNeeded when it opens with another password alone, and Error when the file is
// missing, not a PDF, damaged beyond repair, not allowed to be printed, or without pages. A password that the file does
// not need is ignored; the owner's password allows printing.
Document openDocument(const JobFile& job);

}  // namespace Press
