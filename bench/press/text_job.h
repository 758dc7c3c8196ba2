// The job that the benchmarks print and draw.
#pragma once

#include <string>

// The bytes of a PDF of so many pages of text on A4, the same every time.
std::string textJob(int pageCount);
