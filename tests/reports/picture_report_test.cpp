// The report with picture: the editor stepped through its parcels off the
// screen, one job a parcel, placed by inches on a recording printer.
#include <gtest/gtest.h>

#include "editor/editor_form.h"
#include "reports/picture_report.h"
#include "reports/recorded_picture.h"
#include "tests/reports/report_fixture.h"

namespace parvenna::testing {
namespace {

using reports::ReportKind;

const std::string B = "\u00B0";

class NoHost : public editor::EditorHost {
 public:
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

// A project, the editor on it, and the picture report's window.
struct PictureWindow {
  ReportProject& project;
  ScriptedPrompter prompter;
  FakeReportWindows windows;
  reports::RecordedPicture sketch;
  NoHost host;
  editor::EditorForm editor;
  reports::ReportForm form;

  explicit PictureWindow(ReportProject& p)
      : project(p), editor(p.state, prompter, sketch, host), form(p.state, prompter, windows, &editor) {
    editor.Show_Parcels();
    reports::OpenReport(ReportKind::Picture, false, form);
    form.Form_Load();
    form.Form_Activate();
    windows.calls.clear();
  }
  const std::vector<RecordingPrinter::Job>& Print() {
    prompter.Answer({MsgAnswer::Yes});
    form.cmdPrint_Click();
    return windows.picturePrinter.jobs;
  }
};

std::string Dir(int d, const std::string& q1, const std::string& q2) {
  return q1 + std::to_string(d) + B + "0'0\"" + q2;
}

void AddParcels(ReportProject& p) {
  // Closes within 0.01; its curve's segment is worked out below.
  p.AddParcel("Lot 1", "0", {Line(0, Dir(0, "N", "E"), "100"), Curve(1, Dir(90, "N", "E"), "100", "120", "60", 0),
                             Line(2, Dir(0, "S", "E"), "100"), Line(3, Dir(90, "S", "W"), "100")});
  p.AddParcel("Lot 2", "0", {});  // the editor cannot load it
  p.AddParcel("Lot 3", "0", {Line(0, Dir(0, "N", "E"), "10"), Line(1, Dir(0, "S", "E"), "9.5")});
}

TEST(PictureReport, AllPrintsEveryParcelAsItsOwnJob) {
  ReportProject p;
  AddParcels(p);
  PictureWindow w(p);
  const auto& jobs = w.Print();
  ASSERT_EQ(jobs.size(), 2u);
  for (const auto& job : jobs) {
    EXPECT_TRUE(job.ended);
    ASSERT_EQ(job.pages.size(), 1u);
  }
  const auto& page = jobs[0].pages[0];
  const std::string lines = page.Lines();
  const std::string directionHead = "Misclosure Direction: ";
  const std::size_t direction = lines.find(directionHead);
  ASSERT_NE(direction, std::string::npos);
  EXPECT_GT(lines.size(), direction + directionHead.size() + 8);  // a direction text follows
  EXPECT_EQ(lines.substr(0, direction + directionHead.size()),
            "CLOSURE AND AREA REPORT\n"
            "PARCEL: Lot 1\n"
            "AutoCAD FILE: C:\\plans\\site.dwg\n"
            "LEG          BEARING            LENGTH      ARCLENGTH         RADIUS       ARCAREA +/-\n"
            "    1        N0" + B + "0'0\"E          100.00\n"
            "    2       N90" + B + "0'0\"E          100.00          120.00           60.00        1,979.09 + \n"
            "    3        S0" + B + "0'0\"E          100.00\n"
            "    4       S90" + B + "0'0\"W          100.00\n"
            "AREA: 11,979.09Misclosure Distance: 0.00Error of closure: Perfect\n"
            "Total Distance: 420.00Misclosure Direction: ");
  // The title at 1.8 inches in 24 points, bold and underlined.
  EXPECT_EQ(page.texts[0].text, "CLOSURE AND AREA REPORT");
  EXPECT_EQ(page.texts[0].x, 1.8);
  EXPECT_TRUE(page.texts[0].underline);
  EXPECT_EQ(page.texts[0].size, 24);
  // The sketch: a 4 inch square in the middle of the page, below the text.
  ASSERT_EQ(page.pictures.size(), 1u);
  EXPECT_EQ(page.pictures[0].x, 2.25);
  EXPECT_EQ(page.pictures[0].width, 4);
  EXPECT_EQ(page.pictures[0].height, 4);
  EXPECT_GT(page.pictures[0].y, page.texts.back().y);
  EXPECT_EQ(page.pictures[0].image, &w.sketch);
  EXPECT_NE(jobs[1].pages[0].Lines().find("PARCEL: Lot 3"), std::string::npos);

  // The editor's box is back as it was, and the editor centred.
  EXPECT_EQ(w.editor.picParcel.Left, SketchNormalLeft);
  EXPECT_EQ(w.sketch.BackColor(), colours::White);
  EXPECT_EQ(w.windows.calls.back(), "CenterEditor");
  EXPECT_EQ(w.windows.calls.front(), "EditorOffScreen");
}

TEST(PictureReport, OptionsChooseByTheEditorsClosureAndPrintTheirWord) {
  ReportProject p;
  AddParcels(p);  // Lot 1 closes, Lot 3 misses by 0.5
  PictureWindow w(p);
  w.form.SetOptionValue(1, true);
  auto jobs = w.Print();
  ASSERT_EQ(jobs.size(), 1u);
  std::string lines = jobs[0].pages[0].Lines();
  EXPECT_NE(lines.find("(PASS)\n"), std::string::npos);
  EXPECT_NE(lines.find("PARCEL: Lot 1"), std::string::npos);

  w.windows.picturePrinter.jobs.clear();
  w.form.SetOptionValue(2, true);
  jobs = w.Print();
  ASSERT_EQ(jobs.size(), 1u);
  lines = jobs[0].pages[0].Lines();
  EXPECT_NE(lines.find("(FAIL)\n"), std::string::npos);
  EXPECT_NE(lines.find("PARCEL: Lot 3"), std::string::npos);
}

TEST(PictureReport, ASingleParcelPrintsAloneWhateverTheOptions) {
  ReportProject p;
  AddParcels(p);
  PictureWindow w(p);
  w.form.SelectParcel(2);  // Lot 3
  w.form.optPassFail[1].Value = true;
  const auto& jobs = w.Print();
  ASSERT_EQ(jobs.size(), 1u);
  const std::string lines = jobs[0].pages[0].Lines();
  EXPECT_NE(lines.find("PARCEL: Lot 3"), std::string::npos);
  EXPECT_NE(lines.find("(PASS)"), std::string::npos);  // the word follows the option
  EXPECT_NE(w.windows.calls.back(), "CenterEditor");  // left by the single parcel
}

TEST(PictureReport, ACurveWithRadiusZeroShowsTheRadiusInTheAreaColumn) {
  ReportProject p;
  p.AddParcel("Lot Z", "0", {Line(0, Dir(0, "N", "E"), "10"), Curve(1, Dir(90, "N", "E"), "10", "12", "0", 1)});
  PictureWindow w(p);
  const auto& jobs = w.Print();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_NE(jobs[0].pages[0].Lines().find("           12.00            0.00            0.00  -\n"),
            std::string::npos);
}

// The rows break after the row that ends below 11 inches and go on at 0.5;
// the figures move to a new page when the rows end below 10, the sketch when
// the text ends below 7.
std::vector<RecordingPrinter::Page> PagesOfParcelWith(int courses) {
  ReportProject p;
  std::vector<StoredRow> rows;
  for (int i = 0; i < courses; ++i) rows.push_back(Line(i, Dir(i % 2 ? 0 : 90, "N", "E"), "10"));
  p.AddParcel("Long", "0", rows);
  PictureWindow w(p);
  const auto& jobs = w.Print();
  EXPECT_EQ(jobs.size(), 1u);
  return jobs.empty() ? std::vector<RecordingPrinter::Page>{} : jobs[0].pages;
}

bool Has(const RecordingPrinter::Page& page, const std::string& text) {
  return page.Lines().find(text) != std::string::npos;
}

TEST(PictureReport, ALongParcelBreaksItsPages) {
  const double line = 12 * 1.15 / 72;
  auto pages = PagesOfParcelWith(50);
  ASSERT_EQ(pages.size(), 2u);
  double lastY = 0;
  for (const auto& t : pages[0].texts) lastY = std::max(lastY, t.y);
  EXPECT_LE(lastY, 11);
  EXPECT_GT(lastY + line, 11);
  EXPECT_EQ(pages[1].texts.front().y, 0.5);
  EXPECT_TRUE(Has(pages[1], "   45       N90"));
  EXPECT_TRUE(Has(pages[1], "Total Distance: 500.00"));
  EXPECT_EQ(pages[1].pictures.size(), 1u);

  pages = PagesOfParcelWith(40);  // rows end below 10
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_TRUE(Has(pages[0], "   40        N0"));
  EXPECT_FALSE(Has(pages[0], "AREA: "));
  EXPECT_TRUE(Has(pages[1], "AREA: "));

  pages = PagesOfParcelWith(30);  // the text ends below 7
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_TRUE(Has(pages[0], "Total Distance: 300.00"));
  EXPECT_TRUE(pages[0].pictures.empty());
  ASSERT_EQ(pages[1].pictures.size(), 1u);
  EXPECT_EQ(pages[1].pictures[0].y, 0.5);
}

TEST(PictureReport, NoAnswerNoPrinterNoParcels) {
  ReportProject p;
  AddParcels(p);
  PictureWindow w(p);
  w.prompter.Answer({MsgAnswer::No});
  w.form.cmdPrint_Click();
  EXPECT_TRUE(w.windows.picturePrinter.jobs.empty());
  EXPECT_EQ(w.prompter.Prompts().back(), "Print this report?");

  ReportProject empty;
  PictureWindow e(empty);
  e.Print();
  EXPECT_EQ(e.prompter.Prompts().back(), "There is no data to print.");
  EXPECT_TRUE(e.windows.picturePrinter.jobs.empty());
}

}  // namespace
}  // namespace parvenna::testing
