#pragma once

#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <ostream>
#include <vector>

// A page that tools often render wrongly.
struct AwkwardPage {
  const char* name;
  TestJob job;
  Renderer renderer = Renderer::poppler;  // a renderer that shows the untouched page correctly
  int tolerance = 0;
};

inline void PrintTo(const AwkwardPage& page, std::ostream* out) { *out << page.name; }

std::vector<AwkwardPage> awkwardPages();
