// The preview on paper: its lines in the fixed-pitch font, page after page.
#include "reports/page_flow.h"
#include "reports/report_form.h"

namespace parvenna::reports {
namespace {

constexpr double kMargin = 0.75;  // inches on every side
constexpr double kPreviewFontSize = 10;

std::size_t ByteOffset(std::string_view text, std::size_t characters) {
  std::size_t chars = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      if (chars == characters) return i;
      ++chars;
    }
  }
  return text.size();
}

}  // namespace

void ReportForm::PrintPreview(Printer& printer) const {
  std::string_view text = rtfReport.Text;
  if (rtfReport.SelLength != 0) {
    const std::size_t first = ByteOffset(text, rtfReport.SelStart);
    const std::size_t last = ByteOffset(text, rtfReport.SelStart + rtfReport.SelLength);
    text = text.substr(first, last - first);
  }
  printer.Orientation = 1;
  printer.ScaleMode = 5;
  printer.FontName = rtfReport.FontName;
  printer.FontSize = kPreviewFontSize;
  printer.FontBold = printer.FontUnderline = false;
  printer.CurrentY = kMargin;
  PageFlow flow(printer, kMargin, kMargin);
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    flow.Room(printer.TextHeight());
    printer.CurrentX = kMargin;
    printer.Print(line);
    start = end + 1;
  }
  printer.EndDoc();
}

}  // namespace parvenna::reports
