// The jobs that the benchmarks print and draw, the same every time.
#pragma once

#include <string>

// The bytes of a PDF of so many pages of text on A4.
std::string textJob(int pageCount);

// The same of pages that are each one picture of four megabytes, which nothing makes smaller.
std::string scanJob(int pageCount);
