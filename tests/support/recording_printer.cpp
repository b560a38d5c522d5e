#include "tests/support/recording_printer.h"

#include <cmath>
#include <map>

namespace parvenna::testing {

double RecordingPrinter::TextWidth(std::string_view text) const {
  std::size_t characters = 0;
  for (unsigned char c : text) characters += (c & 0xC0) != 0x80;
  return static_cast<double>(characters) * FontSize * 0.5 / 72;
}

std::string RecordingPrinter::Page::Lines() const {
  // Texts on one line share their top to the thousandth of an inch.
  std::map<long, std::string> lines;
  for (const Text& t : texts) lines[std::lround(t.y * 1000)] += t.text;
  std::string out;
  for (const auto& [y, line] : lines) out += line + "\n";
  return out;
}

std::vector<const RecordingPrinter::Page*> RecordingPrinter::AllPages() const {
  std::vector<const Page*> pages;
  for (const Job& job : jobs) {
    for (const Page& page : job.pages) pages.push_back(&page);
  }
  return pages;
}

}  // namespace parvenna::testing
