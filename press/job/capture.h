#pragma once

#include "press/job/effects.h"
#include "press/pdf/job_file.h"

#include <optional>
#include <string>
#include <vector>

namespace Press {

// An overlay made from a job.
struct Capture {
  std::string pdf;                       // a self-contained PDF of one page
  std::optional<std::string> thumbnail;  // a small BMP picture of it; none when the page cannot be drawn
  std::vector<std::string> notes;        // sentences as returned by `printPdf`, and one when there is no picture
};

// Makes an overlay of a page of a job, from 1: the page as printed with these effects. Throws Error.
Capture captureOverlay(const JobFile& in, const Effects& effects = {}, int page = 1);

}  // namespace Press
