// The summary report: its head, its 24-character names, the rows that are
// too wide, and the filters judged by the closure it works out itself.
#include <gtest/gtest.h>

#include "reports/work_files.h"
#include "tests/reports/report_fixture.h"

namespace parvenna::testing {
namespace {

using reports::ReportKind;

const std::string B = "\u00B0";

std::string Dir(int d, const std::string& q1, const std::string& q2) {
  return q1 + std::to_string(d) + B + "0'0\"" + q2;
}

// Misses closure by 0.3 east and 0.4 south: closure 0.5, 0.5 / 425.4 = 1:851.
std::vector<StoredRow> LotA() {
  return {Line(0, Dir(0, "N", "E"), "100"), Curve(1, Dir(90, "N", "E"), "100", "120", "60", 0),
          Line(2, Dir(0, "S", "E"), "100"), Curve(3, Dir(90, "S", "W"), "99.7", "105", "70", 1),
          Line(4, Dir(0, "S", "E"), "0.4")};
}

// A square that misses by `miss` to the south.
std::vector<StoredRow> Square(const std::string& miss) {
  return {Line(0, Dir(0, "N", "E"), "100"), Line(1, Dir(90, "N", "E"), "100"),
          Line(2, Dir(0, "S", "E"), "100"), Line(3, Dir(90, "S", "W"), "100"),
          Line(4, Dir(0, "S", "E"), miss)};
}

const std::vector<std::string> kFeetHead = {
    "Auto CAD file name: C:\\plans\\site.dwg",
    "",
    "             PARCEL NAME      AREA  CLOSURE    CLOSURE     PRECISION",
    std::string(30, ' ') + "sq.f.   feet     BEARING" + std::string(12, ' '),
    std::string(68, '_'),
    ""};

std::vector<std::string> With(std::vector<std::string> lines, const std::vector<std::string>& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

TEST(SummaryReport, HeadRowsAndARowWiderThanItsColumns) {
  ReportProject p;
  p.AddParcel("Lot A", "0", LotA());
  // Its area, 1,234,375.00, is 12 wide for a column of 11, and its closure
  // fills its 8: each keeps a blank before it, and the line grows wider.
  p.AddParcel("Lot B", "0", {Line(0, Dir(0, "N", "E"), "1234.5"), Line(1, Dir(90, "S", "W"), "1000"),
                             Line(2, Dir(0, "S", "E"), "1234.5"), Line(3, Dir(0, "N", "E"), "0.25")});
  p.AddParcel("Lot C", "0", {});  // no courses, no row
  OpenWindow w(p, ReportKind::Summary);
  EXPECT_EQ(w.Lines(),
            With(kFeetHead, {std::string(19, ' ') + "Lot A  10,857.38    0.50   N36" + B + "52'11\"W   1:851",
                             std::string(19, ' ') + "Lot B 1,234,375.00 1,000.00    S89" + B + "59'8\"E   1:3"}));
  EXPECT_TRUE(w.form.ReportCsvPath.empty());
}

// At 4 decimals an area from 100,000 on and a closure from 1,000 on are
// wider than their columns: the lot is listed all the same, with its figures
// whole and a blank before each.
TEST(SummaryReport, ALargeLotAtFourDecimalsIsListed) {
  ReportProject p(true, 4);
  p.AddParcel("Big", "0", {Line(0, Dir(0, "N", "E"), "400"), Line(1, Dir(90, "N", "E"), "400"),
                           Line(2, Dir(0, "S", "E"), "400"), Line(3, Dir(90, "S", "W"), "400"),
                           Line(4, Dir(0, "S", "E"), "1234.5")});
  p.AddParcel("Small", "0", Square("0.001"));
  OpenWindow w(p, ReportKind::Summary);
  const auto lines = w.Lines();
  ASSERT_EQ(lines.size(), kFeetHead.size() + 2);
  EXPECT_EQ(lines[6], std::string(21, ' ') + "Big 160,000.0000 1,234.5000      N0" + B + "0'0\"E   1:2");
  // 10,000.0000 fills its column.
  EXPECT_EQ(lines[7].substr(0, 44), std::string(19, ' ') + "Small 10,000.0000  0.0010");
}

TEST(SummaryReport, MetricHeadHasItsWordsInTheSameColumns) {
  ReportProject p(false, 2, false);
  p.AddParcel("M", "0", {Line(0, "0" + B + "0'0\"", "10")});
  OpenWindow w(p, ReportKind::Summary);
  const auto lines = w.Lines();
  ASSERT_GE(lines.size(), 4u);
  EXPECT_EQ(lines[3], std::string(30, ' ') + "sq.m.  meter     AZIMUTH" + std::string(12, ' '));
  EXPECT_EQ(lines[3].size(), kFeetHead[3].size());
}

TEST(SummaryReport, NamesShowTheirFirst24CharactersRightAligned) {
  ReportProject p;
  p.AddParcel("ABCDEFGHIJKLMNOPQRSTUVWXYZ1234", "0", LotA());
  p.AddParcel("Short name", "0", LotA());
  OpenWindow w(p, ReportKind::Summary);
  const auto lines = w.Lines();
  ASSERT_EQ(lines.size(), 8u);
  EXPECT_EQ(lines[6], "ABCDEFGHIJKLMNOPQRSTUVWX  10,857.38    0.50   N36" + B + "52'11\"W   1:851");
  EXPECT_EQ(lines[7].substr(0, 24), std::string(14, ' ') + "Short name");
}

// A closure equal to the tolerance passes. The full report judges the
// closure saved with the parcel, the summary the one it works out, so the
// two can disagree.
TEST(ReportFilters, ClosureEqualToTheTolerancePasses) {
  ReportProject p(true, 2, true, 0.5);
  p.AddParcel("At tolerance", "0.9", Square("0.5"));  // saved 0.9, works out at 0.5
  p.AddParcel("Over", "0.5", Square("0.51"));         // saved 0.5, works out at 0.51
  auto names = [](const OpenWindow& w) {
    std::string shown;
    for (const auto& line : w.Lines()) {
      if (line.find("At tolerance") != std::string::npos) shown += "A";
      if (line.find("Over") != std::string::npos) shown += "O";
    }
    return shown;
  };
  OpenWindow summary(p, ReportKind::Summary);
  EXPECT_EQ(names(summary), "AO");
  summary.form.SetOptionValue(1, true);
  EXPECT_EQ(names(summary), "A");
  summary.form.SetOptionValue(2, true);
  EXPECT_EQ(names(summary), "O");

  OpenWindow full(p, ReportKind::Full);
  full.form.SetOptionValue(1, true);
  EXPECT_EQ(names(full), "O");
  full.form.SetOptionValue(2, true);
  EXPECT_EQ(names(full), "A");
}

TEST(ReportFilters, FailOnAProjectWhereAllPassShowsTheHeadAlone) {
  ReportProject p;
  p.AddParcel("Lot 1", "0", Square("0"));
  OpenWindow w(p, ReportKind::Summary);
  w.form.SetOptionValue(2, true);
  EXPECT_EQ(w.Lines(), kFeetHead);
}

TEST(ReportFilters, NoOptionAndNoParcelTakesNothing) {
  ReportProject p;
  p.AddParcel("Lot 1", "0", Square("0"));
  OpenWindow w(p, ReportKind::Full);
  w.form.cbxParcel.Text.clear();
  for (auto& option : w.form.optPassFail) option.Value = false;
  w.form.BuildFullReport();
  EXPECT_EQ(w.form.rtfReport.Text, "");
}

TEST(ReportFilters, AProjectWithoutParcelsHasNoDataAndKeepsThePreview) {
  ReportProject p;
  for (ReportKind kind : {ReportKind::Full, ReportKind::Summary}) {
    OpenWindow w(p, kind);
    EXPECT_EQ(w.prompter.Prompts(), std::vector<std::string>{"there is no data to print."});
    w.form.rtfReport.Text = "kept";
    // The work files of the report before are left empty.
    ASSERT_TRUE(reports::WriteWholeFile(w.form.ReportTextPath, "stale report"));
    if (kind == ReportKind::Full) {
      ASSERT_TRUE(reports::WriteWholeFile(w.form.ReportCsvPath, "stale"));
    }
    w.form.BuildReport();
    EXPECT_EQ(w.form.rtfReport.Text, "kept");
    std::string text = "?", csv = "?";
    EXPECT_TRUE(reports::ReadWholeFile(w.form.ReportTextPath, text));
    EXPECT_EQ(text, "");
    if (kind == ReportKind::Full) {
      EXPECT_TRUE(reports::ReadWholeFile(w.form.ReportCsvPath, csv));
      EXPECT_EQ(csv, "");
    }
  }
}

}  // namespace
}  // namespace parvenna::testing
