// Checks the pinned verdicts of examples.txt (named on the command line): for
// each line, the differential comparison of that input gives that verdict.
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "fuzz/differential/differential.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s examples.txt\n", argv[0]);
    return 2;
  }
  std::ifstream file(argv[1]);
  std::string line;
  int checked = 0;
  int failed = 0;
  for (int number = 1; std::getline(file, line); ++number) {
    std::istringstream fields(line.substr(0, line.find('#')));
    std::string type, hex, expected, bytes;
    if (!(fields >> type)) continue;
    const std::size_t index = DifferentialTypeIndex(type);
    if (!(fields >> hex >> expected) || index == kDifferentialTypeCount || hex.size() % 2 != 0) {
      std::fprintf(stderr, "%s:%d: bad line\n", argv[1], number);
      return 2;
    }
    for (std::size_t i = 0; i < hex.size(); i += 2) {
      bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    }
    const DifferentialVerdict verdict = CompareDecoders(index, bytes);
    ++checked;
    if (verdict.verdict != expected) {
      ++failed;
      std::fprintf(stderr, "%s:%d: verdict %s, expected %s\n  %s\n", argv[1], number, verdict.verdict.c_str(),
                   expected.c_str(), verdict.details.c_str());
    }
  }
  std::printf("%d examples, %d with another verdict\n", checked, failed);
  return checked == 0 || failed != 0 ? 1 : 0;
}
