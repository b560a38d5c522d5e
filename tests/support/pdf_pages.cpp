#include "tests/support/pdf_pages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace parvenna::testing {
namespace {

std::string Quoted(const std::string& path) {
  std::string out = "'";
  for (char c : path) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return out + "'";
}

std::string Run(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return output;
  std::array<char, 4096> buffer{};
  std::size_t n = 0;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) output.append(buffer.data(), n);
  pclose(pipe);
  return output;
}

double Attribute(const std::string& tag, const std::string& name) {
  const std::size_t at = tag.find(" " + name + "=\"");
  if (at == std::string::npos) return 0;
  return std::strtod(tag.c_str() + at + name.size() + 3, nullptr);
}

std::string Unescape(std::string text) {
  const std::pair<const char*, const char*> entities[] = {
      {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&#39;", "'"}, {"&amp;", "&"}};
  for (const auto& [entity, plain] : entities) {
    for (std::size_t at = text.find(entity); at != std::string::npos; at = text.find(entity, at + 1)) {
      text.replace(at, std::string(entity).size(), plain);
    }
  }
  return text;
}

}  // namespace

std::string PdfPage::Text() const {
  // pdftotext lists the words by blocks; the page's lines are the words
  // whose tops lie within two points of each other, left to right.
  std::vector<const PdfWord*> order;
  for (const PdfWord& w : words) order.push_back(&w);
  std::stable_sort(order.begin(), order.end(),
                   [](const PdfWord* a, const PdfWord* b) { return a->yMin < b->yMin; });
  std::vector<std::vector<const PdfWord*>> lines;
  for (const PdfWord* w : order) {
    if (lines.empty() || w->yMin - lines.back().front()->yMin > 2) lines.emplace_back();
    lines.back().push_back(w);
  }
  std::string out;
  for (auto& line : lines) {
    std::stable_sort(line.begin(), line.end(),
                     [](const PdfWord* a, const PdfWord* b) { return a->xMin < b->xMin; });
    if (!out.empty()) out += '\n';
    for (std::size_t k = 0; k < line.size(); ++k) out += (k ? " " : "") + line[k]->text;
  }
  return out;
}

const PdfWord* PdfPage::Find(const std::string& text) const {
  for (const PdfWord& w : words) {
    if (w.text == text) return &w;
  }
  return nullptr;
}

bool PopplerAvailable() {
  return std::system("pdftotext -v > /dev/null 2>&1") == 0 &&
         std::system("pdfinfo -v > /dev/null 2>&1") == 0;
}

std::vector<PdfPage> ReadPdf(const std::string& path) {
  // pdftotext -bbox writes XHTML: a <page width= height=> per page and a
  // <word xMin= yMin= xMax= yMax=>text</word> per word, in reading order.
  const std::string html = Run("pdftotext -bbox " + Quoted(path) + " - 2>/dev/null");
  std::vector<PdfPage> pages;
  std::size_t at = 0;
  while ((at = html.find('<', at)) != std::string::npos) {
    const std::size_t end = html.find('>', at);
    if (end == std::string::npos) break;
    const std::string tag = html.substr(at, end - at);
    if (tag.rfind("<page ", 0) == 0) {
      pages.push_back({Attribute(tag, "width"), Attribute(tag, "height"), {}});
    } else if (tag.rfind("<word ", 0) == 0 && !pages.empty()) {
      const std::size_t close = html.find("</word>", end);
      if (close == std::string::npos) break;
      pages.back().words.push_back({Attribute(tag, "xMin"), Attribute(tag, "yMin"),
                                    Attribute(tag, "xMax"), Attribute(tag, "yMax"),
                                    Unescape(html.substr(end + 1, close - end - 1))});
    }
    at = end + 1;
  }
  return pages;
}

std::vector<std::string> PdfFonts(const std::string& path) {
  std::istringstream lines(Run("pdffonts " + Quoted(path) + " 2>/dev/null"));
  std::vector<std::string> fonts;
  std::string line;
  for (int n = 0; std::getline(lines, line); ++n) {
    if (n < 2) continue;  // the head and its rule
    std::istringstream fields(line);
    std::string name;
    if (fields >> name) fonts.push_back(name);
  }
  return fonts;
}

}  // namespace parvenna::testing
