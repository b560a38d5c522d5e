#include "reports/picture_report.h"

#include <cmath>
#include <cstdint>

#include "editor/editor_form.h"
#include "geometry/numbers.h"
#include "reports/messages.h"
#include "reports/page_flow.h"
#include "reports/report_form.h"
#include "reports/report_format.h"

namespace parvenna::reports {
namespace {

using namespace messages;

// A 16-bit integer, as the saved width of the sketch box is kept.
std::int16_t ToInteger(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= -32768 && rounded <= 32767)) {
    throw RunError(ErrorNumber::Overflow, "Overflow");
  }
  return static_cast<std::int16_t>(rounded);
}

}  // namespace

void PictureReport::PictureRun() {
  if (!AskYesNo(form_.prompter, PrintThisReport)) return;

  SketchBox& box = editor_.picParcel;
  PictureImage* image = dynamic_cast<PictureImage*>(&editor_.picture);
  const double savedTop = box.Top, savedLeft = box.Left, savedHeight = box.Height;
  const std::int16_t savedWidth = ToInteger(box.Width);
  const Rgb savedBack = image ? image->BackColor() : colours::White;
  // A square box on white, the sketch drawn again on it.
  box.Top = box.Left = 0;
  box.Height = box.Width = editor_.Height;
  editor_.picture.SetSize(box.Width, box.Height);
  if (image) image->SetBackColor(colours::White);
  editor_.Drawing();
  form_.windows.MoveEditorOffScreen();

  ComboBox& list = editor_.cbxParcel;
  if (list.ListCount() < 1) {
    Inform(form_.prompter, NoDataPicture);
    return;  // the box stays as it is
  }
  // The printer is chosen when the first page is due, and the run keeps it
  // to its end: on paper each parcel is a job of its own, and a PDF holds
  // the pages of the whole run. A cancelled choice ends the run.
  std::unique_ptr<Printer> printer;
  const auto print = [&] {
    if (!printer) printer = form_.windows.PicturePrinter();
    if (!printer) return false;
    PicturePage(*printer);
    return true;
  };
  editor_.SetListIndex(0);
  const ComboBox& chosen = form_.cbxParcel;
  const bool single = !chosen.Text.empty();
  bool byCounting = true;
  for (int i = 0; i < list.ListCount();) {
    // A parcel the editor could not load leaves its list without a current
    // entry: nothing is printed for it and the run goes on with the next.
    const int current = list.ListIndex;
    if (current >= 0) {
      if (single) {
        const int c = chosen.ListIndex;
        if (c >= 0 && c < chosen.ListCount() &&
            list.ItemData[static_cast<std::size_t>(current)] ==
                chosen.ItemData[static_cast<std::size_t>(c)]) {
          print();
          byCounting = false;
          break;
        }
      } else {
        const double closure = Val(editor_.results.lblClosure.Caption);
        const double tolerance = form_.project.ClosureToleranceValue;
        if (form_.optPassFail[0].Value || (form_.optPassFail[1].Value && closure <= tolerance) ||
            (form_.optPassFail[2].Value && closure > tolerance)) {
          if (!print()) break;
        }
      }
    }
    i = std::max(current, i) + 1;
    if (i < list.ListCount()) {
      editor_.SetListIndex(i);
      form_.windows.DoEvents();
    }
  }
  printer.reset();  // the last job, or the PDF file, is complete
  box.Top = savedTop;
  box.Left = savedLeft;
  box.Height = savedHeight;
  box.Width = savedWidth;
  editor_.picture.SetSize(box.Width, box.Height);
  if (image) image->SetBackColor(savedBack);
  editor_.picture.Cls();
  // The editor comes back on the last parcel of the run: its sketch is drawn
  // again in the box as it was, so that the editor shows what it holds.
  editor_.Drawing();
  if (byCounting) form_.windows.CenterEditor();
}

void PictureReport::PicturePage(Printer& p) {
  const int d = form_.project.ErrDecimals;
  auto F = [d](const std::string& text) { return FormatReportText(text, d); };
  // Statements run bare until the first curve's area; from there on each
  // one stands alone.
  bool ignoring = false;
  auto run = [&](auto&& statement) {
    if (ignoring) ResumeNext(statement);
    else statement();
  };
  const std::string& name = editor_.cbxParcel.Text;
  const std::string head = PageHeadStart + form_.DirectionLabel + PageHeadEnd;
  // The course rows and their head are blank-padded columns, printed in
  // the fixed-pitch font: each column ends where the next begins and the
  // figures stand right-aligned.
  const auto columnFont = [&p](bool bold) {
    p.FontName = ColumnFont;
    p.FontSize = ColumnFontSize;
    p.FontBold = bold;
  };
  bool inRows = false;
  PageFlow flow(p, PageTopMargin, PageBottomMargin);
  flow.repeatHeads = [&] {
    // A page that goes on says with which parcel, and over the rows their heads.
    p.FontName = PageFont;
    p.FontSize = 12;
    p.FontBold = true;
    p.CurrentX = 0.5;
    p.Print(ParcelWord, false);
    p.FontBold = false;
    p.Print(name + Continued);
    if (inRows) {
      columnFont(true);
      p.CurrentX = 0.5;
      p.Print(head + CrLf);
    }
  };

  p.Orientation = 1;
  p.ScaleMode = 5;
  p.FontName = PageFont;
  p.FontSize = 24;
  p.FontBold = true;
  p.FontUnderline = true;
  p.Print(CrLf);
  p.CurrentX = 1.8;
  p.Print(PictureTitle);
  p.FontUnderline = false;
  p.FontSize = 16;
  // The word says what was asked for, not how the parcel closes.
  if (form_.optPassFail[1].Value) {
    p.CurrentX = 3.8;
    p.Print(PassWord);
  }
  if (form_.optPassFail[2].Value) {
    p.CurrentX = 3.8;
    p.Print(FailWord);
  }
  p.Print(CrLf);
  p.FontSize = 12;
  p.CurrentX = 0.5;
  p.Print(ParcelWord, false);
  p.Print(name + CrLf);
  p.FontBold = true;
  p.CurrentX = 0.5;
  p.Print(DrawingWord, false);
  p.FontBold = false;
  p.FontSize = 10;
  p.Print(form_.project.DrawingFile + CrLf);
  columnFont(true);
  p.CurrentX = 0.5;
  p.Print(head + CrLf);
  inRows = true;

  double total = 0;
  std::string text;  // one text for the columns of a curve
  const int rows = editor_.parcel.LastCourse + 1;
  for (int i = 0; i < rows && i < CourseLimit; ++i) {
    const auto row = static_cast<std::size_t>(i);
    const std::string number = std::to_string(i + 1);
    const bool curve = !editor_.txtBearingArc[row].Text.empty();
    if (!curve && editor_.txtBearingLine[row].Text.empty()) continue;
    // A row begins on the next page when it would cross the bottom margin.
    run([&] {
      columnFont(false);
      flow.Room(p.TextHeight());
      columnFont(false);
    });
    if (curve) {
      run([&] { p.CurrentX = 0.5; p.Print(PadLeft(number, 5), false); });
      run([&] { p.CurrentX = 1.0; p.Print(PadLeft(editor_.txtBearingArc[row].Text, 16), false); });
      run([&] { p.CurrentX = 2.3; p.Print(PadLeft(F(editor_.txtChord[row].Text), 16), false); });
      run([&] { p.CurrentX = 3.5; p.Print(PadLeft(F(editor_.txtArc[row].Text), 16), false); });
      run([&] {
        p.CurrentX = 4.7;
        text = PadLeft(F(editor_.txtRadius[row].Text), 16);
        p.Print(text, false);
      });
      ignoring = true;
      // A radius of 0 or an empty field fails here, and the column shows the
      // radius again: the text is the same variable. Reports of older
      // versions print it so.
      run([&] {
        const double A = TextToDouble(editor_.txtArc[row].Text);
        const double C = TextToDouble(editor_.txtChord[row].Text);
        const double R = TextToDouble(editor_.txtRadius[row].Text);
        const double area = Checked(((A * R) - (C * R * std::cos(Divide(A, 2 * R)))) / 2);
        text = PadLeft(FormatReportNumber(RoundHalfEven(area, d), d), 16);
      });
      run([&] { p.CurrentX = 5.9; p.Print(text, false); });
      run([&] {
        p.CurrentX = 7.1;
        p.Print(editor_.chksign[2 * row].Value == 1 ? PlusMark : MinusMark);
      });
      run([&] { total = Checked(total + TextToDouble(editor_.txtArc[row].Text)); });
    } else {
      run([&] { p.CurrentX = 0.5; p.Print(PadLeft(number, 5), false); });
      run([&] { p.CurrentX = 1.0; p.Print(PadLeft(editor_.txtBearingLine[row].Text, 16), false); });
      run([&] { p.CurrentX = 2.3; p.Print(PadLeft(F(editor_.txtDistanceLine[row].Text), 16)); });
      run([&] { total = Checked(total + TextToDouble(editor_.txtDistanceLine[row].Text)); });
    }
  }
  inRows = false;
  const ResultPanel& r = editor_.results;
  // The figures: a blank line and two lines of 12 points, kept together.
  run([&] {
    p.FontName = PageFont;
    p.FontSize = 12;
    p.FontBold = true;
    flow.Room(4 * p.TextHeight());
  });
  run([&] { p.FontName = PageFont; p.FontSize = 12; p.FontBold = true; p.Print(CrLf); });
  run([&] { p.CurrentX = 0.5; p.FontBold = true; p.Print(AreaWord, false); });
  run([&] { p.FontBold = false; p.Print(F(r.lblArea.Caption), false); });
  run([&] { p.CurrentX = 3.0; p.FontBold = true; p.Print(DistanceWord, false); });
  run([&] { p.FontBold = false; p.Print(F(r.lblClosure.Caption), false); });
  run([&] { p.CurrentX = 5.5; p.FontBold = true; p.Print(ErrorWord, false); });
  run([&] { p.FontBold = false; p.Print(r.lblPrecision.Caption); });
  run([&] { p.CurrentX = 0.5; p.FontBold = true; p.Print(TotalWord, false); });
  run([&] { p.FontBold = false; p.Print(FormatReportNumber(total, d), false); });
  run([&] { p.CurrentX = 3.0; p.FontBold = true; p.Print(DirectionWord, false); });
  run([&] {
    p.FontBold = false;
    p.Print(F(r.lblDirection.Caption) + CrLf + CrLf);
  });
  // The sketch: a 4 inch square in the middle of an 8.5 inch wide page,
  // below the text, on the next page when it does not fit.
  constexpr double s = 4;
  run([&] { flow.Room(s); });
  run([&] {
    const PictureImage* image = dynamic_cast<const PictureImage*>(&editor_.picture);
    if (image == nullptr) throw RunError(ErrorNumber::InvalidCall, "The sketch has no image");
    p.PaintPicture(*image, (8.5 - s) / 2, p.CurrentY, s, s);
  });
  run([&] { p.NewPage(); });
  run([&] { p.EndDoc(); });
}

}  // namespace parvenna::reports
