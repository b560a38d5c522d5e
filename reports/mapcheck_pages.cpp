#include "reports/mapcheck_pages.h"

#include <algorithm>

#include "reports/mapcheck_sketch.h"
#include "reports/messages.h"
#include "reports/page_flow.h"
#include "reports/recorded_picture.h"
#include "store/paths.h"

namespace parvenna::reports {
namespace {

namespace mc = messages::mapcheck;

constexpr double kLeft = 0.6;         // inches from the paper's left edge
constexpr double kTop = 0.6;
constexpr double kBottom = 0.8;       // the footer stands in this margin
constexpr double kFooterFromBottom = 0.55;
constexpr double kSketchSize = 4;     // a square, inches
constexpr double kSmallestSketch = 2.5;
constexpr double kSketchUnits = 4000;  // the sketch's own units across

// A printer that marks nothing, measuring text with the fonts of the printer
// that will print: the first pass lays the pages out to count them, and the
// second numbers them.
class CountingPrinter : public Printer {
 public:
  explicit CountingPrinter(Printer& real) : real_(real) {}

  double TextWidth(std::string_view text) const override { return Synced().TextWidth(text); }
  double TextHeight() const override { return Synced().TextHeight(); }
  double ScaleWidth() const override { return Synced().ScaleWidth(); }
  double ScaleHeight() const override { return Synced().ScaleHeight(); }

 protected:
  void StartDoc() override {}
  void StartPage() override {}
  void DrawText(double, double, std::string_view) override {}
  void DrawPicture(const PictureImage&, double, double, double, double) override {}
  void FinishDoc() override {}

 private:
  const Printer& Synced() const {
    real_.Orientation = Orientation;
    real_.FontName = FontName;
    real_.FontSize = FontSize;
    real_.FontBold = FontBold;
    real_.FontUnderline = FontUnderline;
    return real_;
  }
  Printer& real_;
};

class Layout {
 public:
  Layout(const MapcheckDocument& document, Printer& printer, int total)
      : doc_(document), p_(printer), total_(total), flow_(printer, kTop, kBottom) {
    flow_.repeatHeads = [this] { BeginPage(); };
  }

  void Run() {
    p_.Orientation = 1;
    p_.ScaleMode = 5;
    p_.CurrentY = kTop;
    BeginPage();
    std::vector<std::string> summary = SummaryLines(doc_);
    Title(summary.front(), 16);
    summary.erase(summary.begin());
    Lines(summary, false);
    for (const MapcheckParcel& parcel : doc_.parcels) Section(parcel);
    p_.EndDoc();
  }

  int pages() const { return page_; }

 private:
  void Columns(bool bold) {
    p_.FontName = ColumnFont;
    p_.FontSize = ColumnFontSize;
    p_.FontBold = bold;
    p_.FontUnderline = false;
  }
  void Words(double size, bool bold) {
    p_.FontName = PageFont;
    p_.FontSize = size;
    p_.FontBold = bold;
    p_.FontUnderline = false;
  }

  // The top of a page: its footer first, then, on a page that goes on with
  // a parcel, the parcel's name and the heads of the rows being printed.
  void BeginPage() {
    ++page_;
    const double y = p_.CurrentY;
    Words(9, false);
    const std::string footer = mc::PageWord + std::to_string(page_) + mc::OfWord +
                               std::to_string(total_ > 0 ? total_ : page_);
    p_.CurrentY = p_.ScaleHeight() - kFooterFromBottom;
    p_.CurrentX = kLeft;
    p_.Print(mc::Title + std::string(" - ") + store::FileNameOfPath(doc_.header.projectFile), false);
    p_.CurrentX = p_.ScaleWidth() - kLeft - p_.TextWidth(footer);
    p_.Print(footer);
    p_.CurrentY = y;
    if (continuing_.empty()) return;
    Words(10, true);
    p_.CurrentX = kLeft;
    p_.Print(std::string(mc::Title) + " - " + continuing_ + mc::ContinuedWord);
    if (!tableHead_.empty()) {
      Columns(true);
      p_.CurrentX = kLeft;
      p_.Print(tableHead_);
    }
  }

  void Title(const std::string& text, double size) {
    Words(size, true);
    flow_.Room(p_.TextHeight());
    Words(size, true);
    p_.CurrentX = kLeft;
    p_.Print(text);
  }

  // Lines kept together on one page, in the fixed-pitch font.
  void Block(const std::vector<std::string>& lines, bool bold) {
    Columns(bold);
    flow_.Room(p_.TextHeight() * static_cast<double>(lines.size()));
    Columns(bold);
    for (const std::string& line : lines) {
      p_.CurrentX = kLeft;
      p_.Print(line);
    }
  }
  void Lines(const std::vector<std::string>& lines, bool bold) {
    for (const std::string& line : lines) Block({line}, bold);
  }

  void Section(const MapcheckParcel& parcel) {
    const ParcelSection s = SectionOf(doc_.header, parcel);
    continuing_.clear();
    tableHead_.clear();
    flow_.Break();
    continuing_ = parcel.name;
    Title(s.head.front(), 14);
    Lines({s.head.begin() + 1, s.head.end()}, false);
    if (!s.tableHead.empty()) {
      Block({"", s.tableHead}, true);
      tableHead_ = s.tableHead;
      for (const auto& course : s.courses) Block(course, false);
      tableHead_.clear();
    }
    if (!s.closure.empty()) {
      std::vector<std::string> closure{""};
      closure.insert(closure.end(), s.closure.begin(), s.closure.end());
      Block(closure, false);
    }
    Block({""}, false);
    Lines(s.findings, false);
    if (!s.closure.empty()) Sketch(parcel);
  }

  // The sketch below the text, as large as the rest of the page allows up
  // to its full size; on a page of its own when less than the smallest is left.
  void Sketch(const MapcheckParcel& parcel) {
    RecordedPicture picture(kSketchUnits, kSketchUnits);
    DrawMapcheckSketch(doc_.header, parcel, picture);
    Columns(false);
    const double gap = p_.TextHeight();
    double size = std::min(kSketchSize, flow_.Bottom() - p_.CurrentY - gap);
    if (size < kSmallestSketch) {
      flow_.Break();
      size = kSketchSize;
    }
    p_.CurrentY += gap;
    p_.PaintPicture(picture, (p_.ScaleWidth() - size) / 2, p_.CurrentY, size, size);
    p_.CurrentY += size;
  }

  const MapcheckDocument& doc_;
  Printer& p_;
  int total_;
  PageFlow flow_;
  int page_ = 0;
  std::string continuing_;  // the parcel whose section is being printed
  std::string tableHead_;   // the heads over the rows being printed
};

}  // namespace

int PrintMapcheck(const MapcheckDocument& document, Printer& printer) {
  CountingPrinter counting(printer);
  Layout dry(document, counting, 0);
  dry.Run();
  Layout(document, printer, dry.pages()).Run();
  return dry.pages();
}

}  // namespace parvenna::reports
