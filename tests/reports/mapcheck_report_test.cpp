// The mapcheck from a project file: the checks a save would ask about as
// findings, stored rows that are odd or missing, the report window's
// choices, and the printed pages read back with poppler.
#include <gtest/gtest.h>

#include <sstream>

#include "app/cli/report_command.h"
#include "reports/mapcheck_pages.h"
#include "tests/reports/report_fixture.h"
#include "tests/support/pdf_pages.h"
#include "ui/report_printer.h"

namespace parvenna::testing {
namespace {

using reports::ReportKind;
const std::string B = "\u00B0";

std::string Dir(const std::string& d, const std::string& m = "0", const std::string& s = "0") {
  return d + B + m + "'" + s + "\"";
}
std::string N(const std::string& d, const std::string& m = "0", const std::string& s = "0") {
  return "N" + Dir(d, m, s) + "E";
}

// Three lots: one that closes, one a foot short, one with a curve.
void AddLots(ReportProject& p) {
  p.AddParcel("Lot 1", "0", {Line(0, N("0"), "100"), Line(1, N("90"), "100"),
                             Line(2, "S" + Dir("0") + "E", "100"), Line(3, "S" + Dir("90") + "W", "100")});
  p.AddParcel("Lot 2", "1", {Line(0, N("0"), "100"), Line(1, N("90"), "100"),
                             Line(2, "S" + Dir("0") + "E", "99"), Line(3, "S" + Dir("90") + "W", "100")});
  p.AddParcel("Lot 3", "0", {Line(0, N("0"), "100"),
                             Curve(1, "S" + Dir("45") + "E", "141.421356", "157.079632", "100", 0),
                             Line(2, "S" + Dir("90") + "W", "100")});
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string all;
  for (const std::string& line : lines) all += line + "\n";
  return all;
}

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

const reports::MapcheckParcel* Named(const reports::MapcheckDocument& doc, const std::string& name) {
  for (const auto& parcel : doc.parcels) {
    if (parcel.name == name) return &parcel;
  }
  return nullptr;
}

TEST(MapcheckReport, TheChecksOfASaveAreListedAsFindings) {
  ReportProject p;
  p.state.WarningRange = 5;
  p.state.TangentTolerance = 30.0 / 3600;
  // Course 2 an arc of 100 on a chord of 100 and a radius of 1000: the
  // radius and chord imply 100.042. Course 4 leaves the curve 1 degree off
  // its tangent, inside the limits. Course 5 is no quadrant bearing.
  p.AddParcel("Odd", "0", {Line(0, N("0"), "100"), Curve(1, N("0"), "100", "100", "1000", 0),
                           Line(2, N("0"), "50"), Line(3, N("1"), "50"), Line(4, "N12E", "10")});
  OpenWindow w(p, ReportKind::Mapcheck);
  const reports::MapcheckParcel* odd = Named(w.form.Mapcheck(), "Odd");
  ASSERT_NE(odd, nullptr);
  const std::string findings = Joined(odd->findings);
  EXPECT_TRUE(Has(findings, "Course #5: \"N12E\" is not a direction of this project's notation."))
      << findings;
  EXPECT_TRUE(Has(findings,
                  "Warning: In course #2 the arc length does not agree with the radius and chord "
                  "length. The arc length should be 100.042.\n"))
      << findings;
  EXPECT_TRUE(Has(findings, "of 2th arc and the bearing of 3th line.\n")) << findings;
  EXPECT_FALSE(Has(findings, "4th line")) << "a joint of two lines is no tangency question";
  EXPECT_FALSE(Has(findings, "Would you like to save it?")) << "findings, not questions";
  EXPECT_TRUE(Has(w.form.rtfReport.Text, "    length should be 100.042.\r\n")) << "shown in the preview, wrapped";
  EXPECT_TRUE(w.prompter.shown.empty()) << "no box comes up while a report is built";
}

TEST(MapcheckReport, OddStoredRowsAreNamedAndNoParcelIsLeftOut) {
  ReportProject p;
  AddLots(p);
  // A course with no length: the walk stops before it, as in the editor; a
  // negative length is no length the field could hold.
  StoredRow gap = Line(2, N("0"), "NULL");
  p.AddParcel("Negative", "0", {Line(0, N("0"), "10"), Line(1, N("90"), "-10")});
  p.AddParcel("Half typed", "0", {Line(0, N("0"), "10"), Line(1, N("90"), "10"), gap,
                                  Line(3, N("0"), "10")});
  p.AddParcel("Empty", "NULL", {});
  std::vector<StoredRow> many;
  for (int i = 0; i < 51; ++i) many.push_back(Line(i, i % 2 ? "S" + Dir("0") + "E" : N("0"), "10"));
  p.AddParcel("Many", "0", many);
  OpenWindow w(p, ReportKind::Mapcheck);
  const auto& doc = w.form.Mapcheck();
  ASSERT_EQ(doc.parcels.size(), 7u) << "every parcel, with or without courses";

  const auto* half = Named(doc, "Half typed");
  ASSERT_NE(half, nullptr);
  EXPECT_EQ(half->courses.size(), 2u);
  EXPECT_TRUE(Has(Joined(half->findings),
                  "Course #3 is incomplete: it and the courses after it are not counted."));
  const auto* negative = Named(doc, "Negative");
  ASSERT_NE(negative, nullptr);
  EXPECT_EQ(negative->courses.size(), 1u);
  EXPECT_TRUE(Has(Joined(negative->findings), "Course #2 is incomplete"));
  const auto* empty = Named(doc, "Empty");
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(empty->failure, "No complete course is stored for this parcel.");
  EXPECT_FALSE(empty->Pass());
  const auto* many50 = Named(doc, "Many");
  ASSERT_NE(many50, nullptr);
  EXPECT_EQ(many50->courses.size(), 50u);
  EXPECT_TRUE(Has(Joined(many50->findings),
                  "The parcel has 51 courses stored; only the first 50 are checked."));

  const std::string text = w.form.rtfReport.Text;
  EXPECT_TRUE(Has(text, " Empty                  0   no courses")) << text;
  EXPECT_TRUE(Has(text, " 7 parcels, total area ")) << text;
  EXPECT_TRUE(Has(text, "3 pass, 4 fail")) << text;

  // "Pass" and "Fail" judge the closure worked out here; a parcel that
  // cannot be walked is taken by "All" alone.
  w.form.SetOptionValue(1, true);
  EXPECT_EQ(w.form.Mapcheck().parcels.size(), 3u);  // Lot 1, Lot 3, Many
  w.form.SetOptionValue(2, true);
  std::vector<std::string> failing;
  for (const auto& parcel : w.form.Mapcheck().parcels) failing.push_back(parcel.name);
  EXPECT_EQ(failing, (std::vector<std::string>{"Half typed", "Lot 2", "Negative"}));
  w.form.SelectParcel(w.IndexOf("Lot 3"));
  ASSERT_EQ(w.form.Mapcheck().parcels.size(), 1u);
  EXPECT_EQ(w.form.Mapcheck().parcels[0].name, "Lot 3");
}

TEST(MapcheckReport, TheWindowAsksItsPrecisionAndRefusesWhatIsNoRatio) {
  ReportProject p;
  AddLots(p);
  OpenWindow w(p, ReportKind::Mapcheck);
  EXPECT_EQ(w.form.Caption, "Parvenna mapcheck");
  EXPECT_TRUE(w.form.txtRatio.Visible);
  EXPECT_EQ(w.form.txtRatio.Text, "10000");
  // Lot 2 misses by a foot over 399: 1:399.
  EXPECT_FALSE(Named(w.form.Mapcheck(), "Lot 2")->passRatio);
  w.form.txtRatio_Change("300");
  EXPECT_TRUE(Named(w.form.Mapcheck(), "Lot 2")->passRatio);
  EXPECT_TRUE(Has(w.form.rtfReport.Text, "precision 1:300")) << "the head states what was asked";

  for (const char* bad : {"", "abc", "0", "1:500", "12.5"}) {
    w.prompter.shown.clear();
    w.form.txtRatio_Change(bad);
    ASSERT_EQ(w.prompter.shown.size(), 1u) << bad;
    EXPECT_EQ(w.prompter.shown[0].Prompt,
              "The precision must be a whole number from 1 to 1,000,000,000. The former value stays.");
    EXPECT_EQ(w.form.txtRatio.Text, "300") << "the former number comes back";
    EXPECT_EQ(w.form.mapcheckOptions.ratio, 300);
  }

  // The other reports keep their bar as it was.
  OpenWindow full(p, ReportKind::Full);
  EXPECT_FALSE(full.form.txtRatio.Visible);
}

TEST(MapcheckReport, SaveAsGivesTheTextAndOneCsvRowAParcel) {
  ReportProject p;
  AddLots(p);
  OpenWindow w(p, ReportKind::Mapcheck);
  const std::string csv = (p.dir / "lots.csv").string();
  w.form.SaveAs(csv);
  const std::vector<std::string> rows = SplitCrLf(ReadFile(csv));
  ASSERT_GE(rows.size(), 4u);
  EXPECT_EQ(rows[0],
            "\xEF\xBB\xBFParcel,Courses,Perimeter,Area sq.f.,Acres,Error north,Error east,Closure,"
            "Closure rounded,Direction,Precision,Closure tolerance,Precision tolerance,Result");
  // Lot 2 stops a foot north of its beginning: it must go south to close.
  EXPECT_EQ(rows[2].rfind("Lot 2,4,399,9900,0.227273,1.0000", 0), 0u) << rows[2];
  EXPECT_TRUE(Has(rows[2], ",1,\"S0" + B + "0'0\"\"E\",1:399,FAIL,FAIL,FAIL")) << rows[2];
  EXPECT_TRUE(Has(rows[3], ",Perfect,PASS,PASS,PASS")) << rows[3];

  const std::string txt = (p.dir / "lots.txt").string();
  w.form.SaveAs(txt);
  EXPECT_EQ(ReadFile(txt), w.form.rtfReport.Text);
}

TEST(MapcheckReport, NoParcelsGiveTheReportsNoDataBox) {
  ReportProject p;
  OpenWindow w(p, ReportKind::Mapcheck);
  ASSERT_EQ(w.prompter.shown.size(), 1u);
  EXPECT_EQ(w.prompter.shown[0].Prompt, "there is no data to print.");
}

// A parcel of fifty courses, every fifth a curve, that runs over a page.
void AddLongLot(ReportProject& p, const std::string& name) {
  std::vector<StoredRow> rows;
  for (int i = 0; i < 50; ++i) {
    const std::string direction = i < 25 ? N("0") : "S" + Dir("0") + "E";
    if (i % 5 == 4) rows.push_back(Curve(i, direction, "10", "10.0417", "100", i % 2));
    else rows.push_back(Line(i, direction, "10"));
  }
  p.AddParcel(name, "0", rows);
}

TEST(MapcheckReport, PrintedPagesAreNumberedAndEachParcelHasItsSection) {
  if (!PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  ReportProject p;
  AddLots(p);
  AddLongLot(p, "Lot 4 long");
  OpenWindow w(p, ReportKind::Mapcheck);
  const std::string pdf = (p.dir / "mapcheck.pdf").string();
  int count = 0;
  {
    std::unique_ptr<Printer> printer = ui::MakePdfPrinter(pdf);
    count = reports::PrintMapcheck(w.form.Mapcheck(), *printer);
  }
  const std::vector<PdfPage> pages = ReadPdf(pdf);
  ASSERT_EQ(static_cast<int>(pages.size()), count);
  ASSERT_GE(count, 6) << "the summary, a page a lot and more for the long one";
  for (int k = 0; k < count; ++k) {
    EXPECT_TRUE(Has(pages[k].Text(), "Page " + std::to_string(k + 1) + " of " + std::to_string(count)))
        << pages[k].Text();
  }
  const std::string summary = pages[0].Text();
  for (const char* line : {"MAPCHECK SUMMARY", "Lot 1 4 400.00", "Lot 2 4 399.00", "1:399 FAIL",
                           "Lot 3 3 357.08", "Perfect PASS", "4 parcels, total area"}) {
    EXPECT_TRUE(Has(summary, line)) << line << "\n" << summary;
  }
  EXPECT_TRUE(Has(pages[1].Text(), "MAPCHECK - Lot 1"));
  EXPECT_TRUE(Has(pages[2].Text(), "MAPCHECK - Lot 2"));
  EXPECT_TRUE(Has(pages[2].Text(), "Result : FAIL")) << pages[2].Text();
  EXPECT_TRUE(Has(pages[3].Text(), "MAPCHECK - Lot 3"));
  EXPECT_TRUE(Has(pages[3].Text(), "Curve right")) << pages[3].Text();
  EXPECT_TRUE(Has(pages[3].Text(), "Tangent in N90" + B + "0'0\"E Tangent out S0" + B + "0'0\"E"))
      << pages[3].Text();
  // The long lot goes on to another page, which says so and repeats the
  // heads over the rows that go on there.
  EXPECT_TRUE(Has(pages[4].Text(), "MAPCHECK - Lot 4 long"));
  EXPECT_TRUE(Has(pages[5].Text(), "MAPCHECK - Lot 4 long (continued)")) << pages[5].Text();
  EXPECT_TRUE(Has(pages[5].Text(), "No. Course Bearing Distance Northing Easting")) << pages[5].Text();
  // The sketches carry their course numbers, the point of beginning, the
  // north arrow's N and the scale bar's length.
  const std::string lot3 = pages[3].Text();
  for (const char* mark : {"POB", "N", "ft"}) EXPECT_NE(pages[3].Find(mark), nullptr) << mark;
  EXPECT_TRUE(Has(lot3, "0 50 ft") || Has(lot3, "0 20 ft")) << lot3;
}

// ---- The command line -------------------------------------------------------------

struct CliRun {
  int status;
  std::string out, err;
};

CliRun Report(const ReportProject& p, const std::vector<std::string>& args) {
  std::ostringstream out, err;
  const int status = cli::RunReport(args, out, err, ui::MakePdfPrinter, p.Directory());
  return {status, out.str(), err.str()};
}

TEST(MapcheckCommand, WritesTheTextTheRowsTheCoursesAndThePages) {
  ReportProject p;
  AddLots(p);
  const std::string courses = (p.dir / "courses.csv").string();
  const std::string parcels = (p.dir / "parcels.csv").string();
  const std::string pdf = (p.dir / "m.pdf").string();
  CliRun run = Report(p, {"mapcheck", p.Path(), "--ratio", "20,000", "--pob", "5000,2000.5",
                          "--csv", parcels, "--courses-csv", courses, "--pdf", pdf});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "Tolerances   : closure 0.01 ft, precision 1:20,000")) << run.out;
  EXPECT_TRUE(Has(run.out, "Point of beginning : N 5,000.0000  E 2,000.5000")) << run.out;
  EXPECT_TRUE(Has(run.out, "   1 Line   N0" + B + "0'0\"E              100.00      5,100.0000      2,000.5000"))
      << run.out;
  const std::vector<std::string> rows = SplitCrLf(ReadFile(courses));
  ASSERT_EQ(rows.size(), 1u + 4 + 4 + 3) << "a head and a row a course";
  EXPECT_EQ(rows[10].rfind("Lot 3,2,Curve,\"S45" + B + "0'0\"\"E\",141.421356,100,157.079632,"
                           "141.421356,\"90" + B + "0'0\"\"\",",
                           0),
            0u)
      << "seconds carry: " << rows[10];
  EXPECT_TRUE(Has(rows[10], ",right,\"N90" + B + "0'0\"\"E\",\"S0" + B + "0'0\"\"E\",")) << rows[10];
  EXPECT_EQ(SplitCrLf(ReadFile(parcels)).size(), 1u + 3);
  if (PopplerAvailable()) {
    EXPECT_EQ(ReadPdf(pdf).size(), 4u);
  }

  run = Report(p, {"mapcheck", p.Path(), "--parcel", "Lot 2", "--filter", "pass"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "MAPCHECK - Lot 2"));
  EXPECT_FALSE(Has(run.out, "MAPCHECK - Lot 1"));
  run = Report(p, {"mapcheck", p.Path(), "--parcel", "Lot 9"});
  EXPECT_EQ(run.status, 1);
}

TEST(MapcheckCommand, RefusesBadArguments) {
  ReportProject p;
  AddLots(p);
  for (const auto& args : std::vector<std::vector<std::string>>{
           {"mapcheck", p.Path(), "--ratio", "0"},
           {"mapcheck", p.Path(), "--ratio", "ten"},
           {"mapcheck", p.Path(), "--ratio"},
           {"mapcheck", p.Path(), "--pob", "5000"},
           {"mapcheck", p.Path(), "--pob", "5000,east"},
           {"mapcheck", p.Path(), "--pob", "1,2,3"},
           {"mapcheck", p.Path(), "--pob", "1e999,0"},
           {"full", p.Path(), "--courses-csv", "c.csv"},
           {"summary", p.Path(), "--ratio", "5000"}}) {
    const CliRun run = Report(p, args);
    EXPECT_EQ(run.status, 2) << args[2];
    EXPECT_TRUE(Has(run.err, "usage: parvenna-cli report")) << run.err;
  }
  const CliRun run = Report(p, {"mapcheck", p.Path(), "--courses-csv", (p.dir / "no/such/dir/c.csv").string()});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(Has(run.err, "cannot write")) << run.err;
}

}  // namespace
}  // namespace parvenna::testing
