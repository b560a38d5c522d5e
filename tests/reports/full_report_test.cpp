// The full report against texts worked out by hand from its layout.
#include <gtest/gtest.h>

#include <algorithm>

#include "reports/messages.h"
#include "reports/work_files.h"
#include "tests/reports/report_fixture.h"

namespace parvenna::testing {
namespace {

using reports::ReportKind;

const std::string B = "\u00B0";  // the degree mark
const std::string Blank25(25, ' ');

std::string Dir(int d, const std::string& q1 = "", const std::string& q2 = "") {
  return q1 + std::to_string(d) + B + "0'0\"" + q2;
}

// Lot A: lines and curves of both signs, ending 0.3 east and 0.4 south of
// the start. Lot B: lengths above 999, with commas of their own.
void AddFeetParcels(ReportProject& p) {
  p.AddParcel("Lot A", "0.5",
              {Line(0, Dir(0, "N", "E"), "100"), Curve(1, Dir(90, "N", "E"), "100", "120", "60", 0),
               Line(2, Dir(0, "S", "E"), "100"), Curve(3, Dir(90, "S", "W"), "99.7", "105", "70", 1),
               Line(4, Dir(0, "S", "E"), "0.4")});
  p.AddParcel("Lot B", "1000",
              {Line(0, Dir(0, "N", "E"), "1234.5"), Line(1, Dir(90, "S", "W"), "1000"),
               Line(2, Dir(0, "S", "E"), "1234.5"), Line(3, Dir(0, "N", "E"), "0.25")});
}

const std::vector<std::string> kLotA = {
    "Auto CAD file name: C:\\plans\\site.dwg",
    "",
    "Lot Closure Report - Lot # Lot A",
    "",
    "Starting location (North, East) = ( 0, 0 )",
    " LEG    BEARING       LENGTH(ft)    ARC      RADIUS  AREA+/-",
    " ---    -------       ------        ---      ------  -------",
    "   1    N0" + B + "0'0\"E      100.00",
    "   2   N90" + B + "0'0\"E      100.00      120.00       60.00   +",
    "   3    S0" + B + "0'0\"E      100.00",
    "   4   S90" + B + "0'0\"W       99.70      105.00       70.00   -",
    "   5    S0" + B + "0'0\"E        0.40",
    "",
    "Total Distance         : 425.4",
    "Misclosure Direction   : N36" + B + "52'11\"W",
    "Misclosure Distance    : 0.5",
    "Error of Closure       : 1:851",
    // 10000.06 along the chords, + 1979.09 - 1121.77 for the curves
    "AREA                   : 10857.38 sq.f.",
    Blank25 + "= 0.249251 Acres",
    Blank25 + "= 1008.683608 sq.m.",
    "", "", "", "", "", ""};

const std::vector<std::string> kLotB = {
    "Auto CAD file name: C:\\plans\\site.dwg",
    "",
    "Lot Closure Report - Lot # Lot B",
    "",
    "Starting location (North, East) = ( 0, 0 )",
    " LEG    BEARING       LENGTH(ft)    ARC      RADIUS  AREA+/-",
    " ---    -------       ------        ---      ------  -------",
    "   1    N0" + B + "0'0\"E    1,234.50",
    "   2   S90" + B + "0'0\"W    1,000.00",
    "   3    S0" + B + "0'0\"E    1,234.50",
    "   4    N0" + B + "0'0\"E        0.25",
    "",
    "Total Distance         : 3469.25",
    "Misclosure Direction   : S89" + B + "59'8\"E",
    "Misclosure Distance    : 1000",
    "Error of Closure       : 1:3",
    "AREA                   : 1234375 sq.f.",
    Blank25 + "= 28.337351 Acres",
    Blank25 + "= 114677.19 sq.m.",
    "", "", "", "", "", ""};

std::vector<std::string> Joined(std::vector<std::string> a, const std::vector<std::string>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// The rows of a CSV text by the common rules: fields apart by commas, a
// field in quotes may hold commas and doubled quotes, rows end in CR LF.
std::vector<std::vector<std::string>> CsvCells(const std::string& csv) {
  std::vector<std::vector<std::string>> rows(1, std::vector<std::string>(1));
  bool quoted = false;
  for (std::size_t i = 0; i < csv.size(); ++i) {
    const char c = csv[i];
    std::string& cell = rows.back().back();
    if (quoted) {
      if (c == '"' && i + 1 < csv.size() && csv[i + 1] == '"') cell += csv[++i];
      else if (c == '"') quoted = false;
      else cell += c;
    } else if (c == '"' && cell.empty()) {
      quoted = true;
    } else if (c == ',') {
      rows.back().emplace_back();
    } else if (c == '\r' && i + 1 < csv.size() && csv[i + 1] == '\n') {
      ++i;
      if (i + 1 < csv.size()) rows.emplace_back(1);
    } else {
      cell += c;
    }
  }
  return rows;
}

TEST(FullReport, FeetProjectLineForLineInTextAndCsv) {
  ReportProject p;
  AddFeetParcels(p);
  OpenWindow w(p, ReportKind::Full);

  EXPECT_EQ(w.Lines(), Joined(kLotA, kLotB));

  std::string csv;
  ASSERT_TRUE(reports::ReadWholeFile(w.form.ReportCsvPath, csv));
  // The rows as before, but a field that holds a comma or a quote (every
  // direction, a length of 1,000 or more) is quoted, and the file begins
  // with the byte-order mark of UTF-8.
  const std::string head = "\"C:\\plans\\site.dwg\"\r\n"
                           "\"LOT #\",\"LEG\",\"BEARING\",\"LENGTH(ft)\",\"ARC\",\"RADIUS\",\"AREA+/-\"\r\n";
  EXPECT_EQ(csv, "\xEF\xBB\xBF" + head +
                     "\"Lot A\",\"1\",\"N0" + B + "0'0\"\"E\", 100.00\r\n"
                     "\"Lot A\",\"2\",\"N90" + B + "0'0\"\"E\",\"100.00\",\"120.00\",\"60.00\",\"+\"\r\n"
                     "\"Lot A\",\"3\",\"S0" + B + "0'0\"\"E\", 100.00\r\n"
                     "\"Lot A\",\"4\",\"S90" + B + "0'0\"\"W\",\"99.70\",\"105.00\",\"70.00\",\"-\"\r\n"
                     "\"Lot A\",\"5\",\"S0" + B + "0'0\"\"E\", 0.40\r\n" +
                     head +
                     "\"Lot B\",\"1\",\"N0" + B + "0'0\"\"E\",\"1,234.50\"\r\n"
                     "\"Lot B\",\"2\",\"S90" + B + "0'0\"\"W\",\"1,000.00\"\r\n"
                     "\"Lot B\",\"3\",\"S0" + B + "0'0\"\"E\",\"1,234.50\"\r\n"
                     "\"Lot B\",\"4\",\"N0" + B + "0'0\"\"E\", 0.25\r\n");

  // Read as a spreadsheet reads it: each row is its seven cells or fewer,
  // a length with its comma one cell, a direction with its seconds mark.
  const auto rows = CsvCells(csv.substr(3));
  ASSERT_EQ(rows.size(), 13u);
  EXPECT_EQ(rows[0], std::vector<std::string>{"C:\\plans\\site.dwg"});
  EXPECT_EQ(rows[2], (std::vector<std::string>{"Lot A", "1", "N0" + B + "0'0\"E", " 100.00"}));
  EXPECT_EQ(rows[3], (std::vector<std::string>{"Lot A", "2", "N90" + B + "0'0\"E", "100.00", "120.00",
                                               "60.00", "+"}));
  EXPECT_EQ(rows[9], (std::vector<std::string>{"Lot B", "1", "N0" + B + "0'0\"E", "1,234.50"}));

  // The preview is the work file beside the program.
  EXPECT_EQ(w.form.ReportTextPath, p.Directory() + "temp.rpt");
  EXPECT_EQ(w.form.ReportCsvPath, p.Directory() + "tempcsv.rpt");
  std::string text;
  ASSERT_TRUE(reports::ReadWholeFile(w.form.ReportTextPath, text));
  EXPECT_EQ(text, w.form.rtfReport.Text);
}

// Metres in azimuths, 3 decimals: the unit text "(m) " keeps the head's width.
TEST(FullReport, MetricAzimuthProject) {
  ReportProject p(false, 3, false);
  p.AddParcel("M1", "0.25",
              {Line(0, Dir(0), "50"), Curve(1, Dir(90), "40", "45", "30", 1),
               Line(2, Dir(180), "50.2"), Line(3, Dir(270), "39.85")});
  OpenWindow w(p, ReportKind::Full);
  EXPECT_EQ(w.Lines(), (std::vector<std::string>{
                           "Auto CAD file name: C:\\plans\\site.dwg",
                           "",
                           "Lot Closure Report - Lot # M1",
                           "",
                           "Starting location (North, East) = ( 0, 0 )",
                           " LEG    AZIMUTH       LENGTH(m)     ARC      RADIUS  AREA+/-",
                           " ---    -------       ------        ---      ------  -------",
                           "   1      0" + B + "0'0\"      50.000",
                           "   2     90" + B + "0'0\"      40.000      45.000      30.000   -",
                           "   3    180" + B + "0'0\"      50.200",
                           "   4    270" + B + "0'0\"      39.850",
                           "",
                           "Total Distance         : 185.05",
                           "Misclosure Direction   : 323" + B + "7'48\"",
                           "Misclosure Distance    : 0.25",
                           "Error of Closure       : 1:740",
                           // 2008 along the chords, - 235.987 for the curve
                           "AREA                   : 1772.013 sq.m.",
                           Blank25 + "= 0.177201 Hectares",
                           Blank25 + "= 0.437874 Acres",
                           "", "", "", "", "", ""}));
  std::string csv;
  ASSERT_TRUE(reports::ReadWholeFile(w.form.ReportCsvPath, csv));
  EXPECT_NE(csv.find("\"LOT #\",\"LEG\",\"AZIMUTH\",\"LENGTH(m) \",\"ARC\""), std::string::npos);
}

// With 0 decimals the amounts end in a point, while the total and the
// misclosure keep their fractions in general form.
TEST(FullReport, NoDecimalsKeepTheTrailingPoint) {
  ReportProject p(true, 0);
  p.AddParcel("Lot A", "0", {Line(0, Dir(0, "N", "E"), "100.4"), Line(1, Dir(0, "S", "E"), "1234.2"),
                             Curve(2, Dir(0, "N", "E"), "1000", "1500.6", "500", 0)});
  OpenWindow w(p, ReportKind::Full);
  const auto lines = w.Lines();
  ASSERT_GE(lines.size(), 20u);
  EXPECT_EQ(lines[7], "   1    N0" + B + "0'0\"E        100.");
  EXPECT_EQ(lines[8], "   2    S0" + B + "0'0\"E      1,234.");
  EXPECT_EQ(lines[9], "   3    N0" + B + "0'0\"E      1,000.      1,501.        500.   +");
  EXPECT_EQ(lines[11], "Total Distance         : 2835.2");
  EXPECT_EQ(lines[13], "Misclosure Distance    : 134");  // 1000 + 100.4 - 1234.2, rounded
}

// A closed figure: misclosure 0, "Perfect", and the fixed text for two equal points.
TEST(FullReport, ClosedParcelIsPerfect) {
  ReportProject p;
  p.AddParcel("Square", "0", {Line(0, Dir(0, "N", "E"), "100"), Line(1, Dir(90, "N", "E"), "100"),
                              Line(2, Dir(0, "S", "E"), "100"), Line(3, Dir(90, "S", "W"), "100")});
  OpenWindow w(p, ReportKind::Full);
  const auto lines = w.Lines();
  ASSERT_GE(lines.size(), 16u);
  EXPECT_EQ(lines[14], "Misclosure Distance    : 0");
  EXPECT_EQ(lines[15], "Error of Closure       : Perfect");
  EXPECT_EQ(lines[16], "AREA                   : 10000 sq.f.");
}

// A direction wider than 12 characters loses its text line, not its CSV
// row; on a curve the sign still completes a line of its own.
TEST(FullReport, WideFieldsDropTheirTextLineButKeepTheCsvRow) {
  ReportProject p;
  const std::string wide = "N 10" + B + "00'00\" E";  // 13 characters
  p.AddParcel("Lot W", "0", {Line(0, Dir(0, "N", "E"), "100"), Line(1, wide, "50"),
                             Curve(2, wide, "10", "11", "20", 1),
                             Line(3, Dir(0, "S", "E"), "123456789.5")});
  OpenWindow w(p, ReportKind::Full);
  const auto lines = w.Lines();
  ASSERT_GE(lines.size(), 11u);
  EXPECT_EQ(lines[7], "   1    N0" + B + "0'0\"E      100.00");
  EXPECT_EQ(lines[8], "   -");  // the curve's own second write
  EXPECT_EQ(lines[9], "");      // 123,456,789.50 is 14 wide: its line is gone too
  EXPECT_EQ(lines[10], "Total Distance         : 123456950.5");

  std::string csv;
  ASSERT_TRUE(reports::ReadWholeFile(w.form.ReportCsvPath, csv));
  const std::string quotedWide = "\"N 10" + B + "00'00\"\" E\"";
  EXPECT_NE(csv.find("\"Lot W\",\"2\"," + quotedWide + ", 50.00\r\n"), std::string::npos);
  EXPECT_NE(csv.find("\"Lot W\",\"3\"," + quotedWide + ",\"10.00\",\"11.00\",\"20.00\",\"-\"\r\n"),
            std::string::npos);
  EXPECT_NE(csv.find("\"Lot W\",\"4\",\"S0" + B + "0'0\"\"E\",\"123,456,789.50\"\r\n"),
            std::string::npos);
}

// Rows are stored by RowNo and listed by counting: with a gap the last row
// is not reached, and the gap shows the record the former parcel left there.
TEST(FullReport, RowNoGapsListStaleRecords) {
  ReportProject p;
  p.AddParcel("Lot 1", "0", {Line(0, Dir(0, "N", "E"), "10"), Line(1, Dir(90, "N", "E"), "20"),
                             Line(2, Dir(0, "S", "E"), "30")});
  p.AddParcel("Lot 2", "0", {Line(0, Dir(0, "N", "E"), "40"), Line(2, Dir(90, "S", "W"), "50")});
  OpenWindow w(p, ReportKind::Full);
  const auto lines = w.Lines();
  const auto block2 = std::find(lines.begin(), lines.end(), "Lot Closure Report - Lot # Lot 2");
  ASSERT_NE(block2, lines.end());
  EXPECT_EQ(*(block2 + 5), "   1    N0" + B + "0'0\"E       40.00");
  EXPECT_EQ(*(block2 + 6), "   2   N90" + B + "0'0\"E       20.00");  // Lot 1's record
  EXPECT_EQ(*(block2 + 7), "");
  EXPECT_EQ(*(block2 + 8), "Total Distance         : 60");
}

// A Null in a column keeps the value that the record already held; a parcel
// without courses leaves no trace; a Null closure is taken by "All" only.
TEST(FullReport, NullColumnsAndEmptyParcels) {
  ReportProject p;
  p.AddParcel("Lot 1", "0", {Line(0, Dir(0, "N", "E"), "10"), Line(1, Dir(90, "N", "E"), "20")});
  p.AddParcel("Lot 2", "NULL", {});
  StoredRow nullLength = Line(1, Dir(0, "S", "E"), "NULL");
  StoredRow nullDirection = Line(0, "", "33");
  nullDirection.Direction = "NULL";
  p.AddParcel("Lot 3", "NULL", {nullDirection, nullLength});
  OpenWindow w(p, ReportKind::Full);
  const auto lines = w.Lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Lot Closure Report - Lot # Lot 2"), 0);
  const auto block3 = std::find(lines.begin(), lines.end(), "Lot Closure Report - Lot # Lot 3");
  ASSERT_NE(block3, lines.end());
  EXPECT_EQ(*(block3 + 5), "   1    N0" + B + "0'0\"E       33.00");  // Lot 1's direction
  EXPECT_EQ(*(block3 + 6), "   2    S0" + B + "0'0\"E       20.00");  // Lot 1's length

  w.form.SetOptionValue(1, true);  // Pass: the Null closure is not taken
  const auto passed = w.Lines();
  EXPECT_EQ(std::count(passed.begin(), passed.end(), "Lot Closure Report - Lot # Lot 1"), 1);
  EXPECT_EQ(std::count(passed.begin(), passed.end(), "Lot Closure Report - Lot # Lot 3"), 0);
}

// Huge numbers and unreadable directions cost their parcel's block or line,
// never the report.
TEST(FullReport, BadValuesCostTheirParcelOnly) {
  ReportProject p;
  p.AddParcel("Lot 1", "0", {Line(0, "X", "10")});  // no direction at all
  p.AddParcel("Lot 2", "0", {Line(0, Dir(0, "N", "E"), "1e300"), Line(1, Dir(0, "N", "E"), "1e300")});
  p.AddParcel("Lot 3", "0", {Line(0, Dir(0, "N", "E"), "7")});
  OpenWindow w(p, ReportKind::Full);
  const auto lines = w.Lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Lot Closure Report - Lot # Lot 1"), 0);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Lot Closure Report - Lot # Lot 3"), 1);
  EXPECT_TRUE(w.prompter.shown.empty());
}

}  // namespace
}  // namespace parvenna::testing
