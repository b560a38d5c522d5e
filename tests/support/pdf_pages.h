#pragma once

#include <string>
#include <vector>

namespace parvenna::testing {

// A PDF read back with poppler's tools (pdfinfo, pdftotext), as a reader of
// the printed file sees it.
struct PdfWord {
  double xMin, yMin, xMax, yMax;  // points from the page's top left corner
  std::string text;
};

struct PdfPage {
  double width = 0, height = 0;  // points
  std::vector<PdfWord> words;
  // The words in reading order: a line of the page a line of text, its
  // words one blank apart.
  std::string Text() const;
  // The first word that is `text`, or null.
  const PdfWord* Find(const std::string& text) const;
};

// True when poppler's tools can be run.
bool PopplerAvailable();
// The pages of a PDF with the words on each; empty when it cannot be read.
std::vector<PdfPage> ReadPdf(const std::string& path);
// The fonts named in the PDF (pdffonts' first column).
std::vector<std::string> PdfFonts(const std::string& path);

}  // namespace parvenna::testing
