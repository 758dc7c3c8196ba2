// The jobs for the benchmarks, always the same.
#pragma once

#include <string>

// A PDF with `pageCount` pages of text on A4.
std::string textJob(int pageCount);

// The same with an incompressible picture of four megabytes on each page.
std::string scanJob(int pageCount);
