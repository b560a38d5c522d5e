// The report with picture: the editor stepped through its parcels off the
// screen, one job a parcel, placed by inches on a recording printer.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <sstream>

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
    return windows.pictureJobs;
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

  w.windows.pictureJobs.clear();
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

// Whatever the number of courses, nothing crosses the bottom margin half an
// inch above the paper's edge: a row that would begins the next page, where
// the parcel's name and the column heads come first; the figures stay
// together and the sketch stays whole, each on the next page when it does
// not fit; every course is printed once, in order.
TEST(PictureReport, ALongParcelBreaksItsPagesBetweenBlocksAndRepeatsItsHeads) {
  // Ten rows leave room for all on one page; fifty rows of 9 points do not
  // fit under the page's head and go on.
  for (auto [courses, pageCount] : {std::pair{10, 1u}, {30, 2u}, {40, 2u}, {50, 2u}}) {
    SCOPED_TRACE(std::to_string(courses) + " courses");
    const auto pages = PagesOfParcelWith(courses);
    ASSERT_EQ(pages.size(), pageCount);
    int legs = 0, pictures = 0, areas = 0;
    for (std::size_t k = 0; k < pages.size(); ++k) {
      const auto& page = pages[k];
      for (const auto& t : page.texts) EXPECT_LE(t.y + t.size * 1.15 / 72, 10.5 + 1e-9) << t.text;
      for (const auto& picture : page.pictures) {
        EXPECT_LE(picture.y + picture.height, 10.5 + 1e-9);
        EXPECT_EQ(picture.height, 4);
        ++pictures;
      }
      if (k > 0) {
        ASSERT_FALSE(page.texts.empty()) << "a page that goes on says with what";
        EXPECT_EQ(page.texts.front().y, 0.5);
        EXPECT_EQ(page.Lines().rfind("PARCEL: Long (continued)\n", 0), 0u) << page.Lines();
      }
      std::istringstream lines(page.Lines());
      bool headSeen = false;
      for (std::string line; std::getline(lines, line);) {
        if (line.rfind("LEG          BEARING", 0) == 0) headSeen = true;
        if (line.size() > 5 && line.find_first_not_of(' ') < 5 && std::isdigit(static_cast<unsigned char>(line[4]))) {
          EXPECT_TRUE(headSeen) << "a row under its head";
          EXPECT_EQ(std::stoi(line.substr(0, 5)), ++legs);
        }
        if (line.rfind("AREA: ", 0) == 0) {
          ++areas;
          EXPECT_TRUE(Has(page, "Total Distance: ")) << "the figures together";
        }
      }
    }
    EXPECT_EQ(legs, courses);
    EXPECT_EQ(pictures, 1);
    EXPECT_EQ(areas, 1);
  }
}

// The printer is asked for when the first page is due, once a run: no
// dialog when the choice takes no parcel, and a cancelled dialog ends the
// run with the editor's sketch box given back.
TEST(PictureReport, ThePrinterIsChosenForTheFirstPageAndACancelEndsTheRun) {
  ReportProject p;
  AddParcels(p);  // Lot 1 closes, Lot 3 misses by 0.5
  PictureWindow w(p);
  const auto asked = [&] { return std::count(w.windows.calls.begin(), w.windows.calls.end(), "PicturePrinter"); };
  w.Print();
  EXPECT_EQ(asked(), 1);
  EXPECT_EQ(w.windows.pictureJobs.size(), 2u);

  w.windows.calls.clear();
  w.windows.pictureJobs.clear();
  w.windows.printerChosen = false;
  w.Print();
  EXPECT_EQ(asked(), 1);
  EXPECT_TRUE(w.windows.pictureJobs.empty());
  EXPECT_EQ(w.editor.picParcel.Left, SketchNormalLeft);
  EXPECT_EQ(w.windows.calls.back(), "CenterEditor");

  ReportProject allPass;
  allPass.AddParcel("Lot 1", "0", {Line(0, Dir(0, "N", "E"), "10"), Line(1, Dir(0, "S", "E"), "10")});
  PictureWindow f(allPass);
  f.form.SetOptionValue(2, true);
  f.Print();
  EXPECT_EQ(std::count(f.windows.calls.begin(), f.windows.calls.end(), "PicturePrinter"), 0);
}

TEST(PictureReport, NoAnswerNoPrinterNoParcels) {
  ReportProject p;
  AddParcels(p);
  PictureWindow w(p);
  w.prompter.Answer({MsgAnswer::No});
  w.form.cmdPrint_Click();
  EXPECT_TRUE(w.windows.pictureJobs.empty());
  EXPECT_EQ(w.prompter.Prompts().back(), "Print this report?");

  ReportProject empty;
  PictureWindow e(empty);
  e.Print();
  EXPECT_EQ(e.prompter.Prompts().back(), "There is no data to print.");
  EXPECT_TRUE(e.windows.pictureJobs.empty());
}

}  // namespace
}  // namespace parvenna::testing
