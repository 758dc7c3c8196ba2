// Writes the jobs for press_bench.sh: text pages on A4, or pages with one large picture each.
#include "bench/press/sample_jobs.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

int main(int count, char** arguments) {
  const int pages = count >= 3 ? std::atoi(arguments[2]) : 0;
  const bool isScan = count == 4 && std::string(arguments[3]) == "scan";
  if (pages < 1 || count > 4 || (count == 4 && !isScan)) {
    std::cerr << "Usage: press_bench_job FILE.pdf PAGES [scan]\n";
    return 2;
  }
  std::ofstream file(arguments[1], std::ios::binary);
  file << (isScan ? scanJob(pages) : textJob(pages));
  file.close();
  if (!file) {
    std::cerr << "\"" << arguments[1] << "\" cannot be written: choose another place.\n";
    return 1;
  }
}
