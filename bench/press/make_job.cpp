// Writes the job that press_bench.sh prints.
#include "bench/press/text_job.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

int main(int count, char** arguments) {
  const int pages = count == 3 ? std::atoi(arguments[2]) : 0;
  if (pages < 1) {
    std::cerr << "Usage: press_bench_job FILE.pdf PAGES\n";
    return 2;
  }
  std::ofstream file(arguments[1], std::ios::binary);
  file << textJob(pages);
  file.close();
  if (!file) {
    std::cerr << "\"" << arguments[1] << "\" cannot be written: choose another place.\n";
    return 1;
  }
}
