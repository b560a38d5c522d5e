// The report window as a model: its switch, its bar, its filters and
// choices, saving by the name's ending, printing, the work files.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "reports/messages.h"
#include "reports/report_format.h"
#include "reports/rich_text.h"
#include "reports/work_files.h"
#include "tests/reports/report_fixture.h"

namespace parvenna::testing {
namespace {

using reports::ReportKind;

const std::string B = "\u00B0";

void AddTwoParcels(ReportProject& p) {
  p.AddParcel("Lot 1", "0", {Line(0, "N0" + B + "0'0\"E", "10"), Line(1, "S0" + B + "0'0\"E", "10.2")});
  p.AddParcel("Lot 2", "0", {Line(0, "N0" + B + "0'0\"E", "20"), Line(1, "S0" + B + "0'0\"E", "20")});
}

std::size_t Blocks(const OpenWindow& w) {
  std::size_t n = 0;
  for (const auto& line : w.Lines()) n += line.rfind("Lot Closure Report", 0) == 0;
  return n;
}

TEST(ReportNumbers, PictureGroupsRoundsHalfEvenAndKeepsItsPoint) {
  using reports::FormatReportNumber;
  EXPECT_EQ(reports::ReportNumberFormat(2), "###,##0.00");
  EXPECT_EQ(reports::ReportNumberFormat(0), "###,##0.");
  EXPECT_EQ(FormatReportNumber(1234567.891, 2), "1,234,567.89");
  EXPECT_EQ(FormatReportNumber(999.995, 2), "1,000.00");
  EXPECT_EQ(FormatReportNumber(2.675, 2), "2.68");  // decimal ties, to even
  EXPECT_EQ(FormatReportNumber(2.665, 2), "2.66");
  EXPECT_EQ(FormatReportNumber(0.5, 0), "0.");
  EXPECT_EQ(FormatReportNumber(1.5, 0), "2.");
  EXPECT_EQ(FormatReportNumber(0.04, 1), "0.0");
  EXPECT_EQ(FormatReportNumber(-1234.5, 1), "-1,234.5");
  EXPECT_EQ(FormatReportNumber(123, 0), "123.");
  EXPECT_EQ(reports::FormatReportText("N/A", 2), "N/A");
  EXPECT_EQ(reports::FormatReportText("", 2), "");
  EXPECT_EQ(reports::FormatReportText("12.5", 3), "12.500");
  EXPECT_THROW(FormatReportNumber(HUGE_VAL, 2), RunError);
  EXPECT_EQ(FormatReportNumber(-999.9, 0), "-1,000.");
  EXPECT_EQ(FormatReportNumber(-0.25, 1), "-0.2");
  EXPECT_EQ(FormatReportNumber(1e21, 2), "1,000,000,000,000,000,000,000.00");

  // Written after what a line already holds, or not at all.
  std::string line = "  12";
  reports::AppendReportNumber(line, 1234.5, 2);
  EXPECT_EQ(line, "  121,234.50");
  EXPECT_THROW(reports::AppendReportNumber(line, HUGE_VAL, 2), RunError);
  EXPECT_THROW(reports::AppendPadded(line, "abcd", 3), RunError);
  EXPECT_EQ(line, "  121,234.50");
}

TEST(ReportNumbers, PadLeftCountsCharactersAndRefusesAWideText) {
  EXPECT_EQ(reports::PadLeft("N1" + B + "0'0\"E", 10), "  N1" + B + "0'0\"E");
  EXPECT_EQ(reports::PadLeft("abc", 3), "abc");
  try {
    reports::PadLeft("abcd", 3);
    FAIL();
  } catch (const RunError& e) {
    EXPECT_EQ(e.Code(), 5);
  }
  EXPECT_EQ(reports::LeftChars("a" + B + "bc", 2), "a" + B);
}

TEST(ReportWindow, CaptionBarAndTooltips) {
  ReportProject p;
  AddTwoParcels(p);
  OpenWindow w(p, ReportKind::Summary);
  const auto& f = w.form;
  EXPECT_EQ(f.Caption, "Parvenna summary report");
  EXPECT_EQ(f.cbxParcel.List, (std::vector<std::string>{"Lot 1", "Lot 2"}));
  EXPECT_EQ(f.cbxParcel.ItemData, (std::vector<long>{1, 2}));
  EXPECT_EQ(f.cbxParcel.ToolTipText, "Select a single parcel to report on.");
  EXPECT_EQ(f.cmdExport.Caption, "&Save as");
  EXPECT_EQ(f.cmdPrint.ToolTipText, "Click to print this report.");
  EXPECT_EQ(f.cmdClose.ToolTipText, "Close the print preview window.");
  EXPECT_EQ(f.optPassFail[1].ToolTipText,
            "Show only parcels that have a closure distance better than the tolerance found in "
            "settings.");
  EXPECT_EQ(f.optPassFail[2].Caption, "Fail");
  EXPECT_EQ(f.Label1.Caption, "Parcel:");
  EXPECT_EQ(f.rtfReport.ToolTipText, "The preview of the report.");
  EXPECT_EQ(f.DirectionLabel, "BEARING");
  EXPECT_TRUE(f.optPassFail[0].Value);
  EXPECT_EQ(w.windows.calls.back(), "ReportTopmost");

  ReportProject quiet;
  quiet.state.ToolTipsOn = false;
  quiet.state.BearingMode = false;
  OpenWindow q(quiet, ReportKind::Full);
  EXPECT_EQ(q.form.cmdPrint.ToolTipText, "");
  EXPECT_EQ(q.form.rtfReport.ToolTipText, "");
  EXPECT_EQ(q.form.DirectionLabel, "AZIMUTH");
}

TEST(ReportWindow, ComboThenAllAndActivationAgain) {
  ReportProject p;
  AddTwoParcels(p);
  OpenWindow w(p, ReportKind::Full);
  EXPECT_EQ(Blocks(w), 2u);

  w.form.SelectParcel(w.IndexOf("Lot 2"));
  EXPECT_EQ(Blocks(w), 1u);
  EXPECT_EQ(w.Lines()[2], "Lot Closure Report - Lot # Lot 2");
  for (const auto& option : w.form.optPassFail) EXPECT_FALSE(option.Value);

  // The choice of a parcel wins over the options.
  w.form.optPassFail[2].Value = true;
  w.form.BuildFullReport();
  EXPECT_EQ(Blocks(w), 1u);

  w.form.optPassFail[2].Value = false;
  w.form.SetOptionValue(0, true);
  EXPECT_EQ(w.form.cbxParcel.Text, "");
  EXPECT_EQ(Blocks(w), 2u);

  // Activating again on "All" builds nothing anew.
  w.form.rtfReport.Text = "unchanged";
  w.form.Form_Activate();
  EXPECT_EQ(w.form.rtfReport.Text, "unchanged");
}

TEST(ReportWindow, SaveAsGoesByTheNamesEnding) {
  ReportProject p;
  AddTwoParcels(p);
  OpenWindow w(p, ReportKind::Full);
  auto save = [&](const std::string& name) {
    w.windows.saveName = (p.dir / name).string();
    w.form.cmdExport_Click();
    std::string bytes;
    reports::ReadWholeFile(*w.windows.saveName, bytes);
    return bytes;
  };
  std::string csv;
  reports::ReadWholeFile(w.form.ReportCsvPath, csv);
  EXPECT_EQ(save("plain.txt"), w.form.rtfReport.Text);
  EXPECT_EQ(save("PLAIN.TXT"), w.form.rtfReport.Text);
  EXPECT_EQ(save("cells.csv"), csv);
  EXPECT_EQ(save("CELLS.CSV"), csv);
  for (const std::string name : {"doc.rtf", "doc.csv.bak", "no_extension"}) {
    const std::string rtf = save(name);
    EXPECT_EQ(rtf.rfind("{\\rtf1", 0), 0u) << name;
    EXPECT_NE(rtf.find("Courier New"), std::string::npos);
    EXPECT_NE(rtf.find("Lot Closure Report - Lot # Lot 1\\par"), std::string::npos);
  }
  EXPECT_EQ(w.windows.calls[w.windows.calls.size() - 1],
            "ShowSave Rich Text File(*.rtf)|*.rtf|TEXT (*.txt)|*.txt|Excel File(*.csv)|*.csv|");
  // Saved over a longer file of the same name, the file holds the new text alone.
  w.form.rtfReport.Text = "short";
  EXPECT_EQ(save("plain.txt"), "short");

  // A cancelled dialog and a name that cannot be written: nothing, no word.
  w.windows.saveName.reset();
  w.form.cmdExport_Click();
  w.windows.saveName = (p.dir / "missing" / "x.txt").string();
  w.form.cmdExport_Click();
  EXPECT_TRUE(w.prompter.shown.empty());
}

TEST(ReportWindow, SummarySavedAsCsvLeavesNoFile) {
  ReportProject p;
  AddTwoParcels(p);
  OpenWindow w(p, ReportKind::Summary);
  w.windows.saveName = (p.dir / "summary.csv").string();
  w.form.cmdExport_Click();
  EXPECT_FALSE(std::filesystem::exists(p.dir / "summary.csv"));
}

TEST(ReportWindow, RichTextEscapesAndKeepsLines) {
  const std::string rtf = reports::RichTextOf("a{b}\\c\r\nN1" + B + "\r\n");
  EXPECT_NE(rtf.find("a\\{b\\}\\\\c\\par\r\nN1\\u176?\\par"), std::string::npos);
  EXPECT_NE(rtf.find("\\fmodern"), std::string::npos);
}

TEST(ReportWindow, PrintsThePreviewOrItsSelection) {
  ReportProject p;
  AddTwoParcels(p);
  OpenWindow w(p, ReportKind::Summary);
  w.form.cmdPrint_Click();
  EXPECT_EQ(w.windows.printerFlags.back(), 256);
  const auto& jobs = w.windows.printed;
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_TRUE(jobs[0].ended);
  const auto& texts = jobs[0].pages[0].texts;
  ASSERT_FALSE(texts.empty());
  EXPECT_EQ(texts[0].text, "Auto CAD file name: C:\\plans\\site.dwg");
  EXPECT_EQ(texts[0].x, 0.75);

  w.form.rtfReport.SelStart = 20;
  w.form.rtfReport.SelLength = 8;
  w.form.cmdPrint_Click();
  EXPECT_EQ(w.windows.printerFlags.back(), 257);
  EXPECT_EQ(w.windows.printed[0].pages[0].texts[0].text, "C:\\plans");

  // A long report runs over pages, each line inside the margins.
  w.form.rtfReport.Text.clear();
  w.form.rtfReport.SelLength = 0;
  for (int i = 0; i < 150; ++i) w.form.rtfReport.Text += "line " + std::to_string(i) + "\r\n";
  w.form.cmdPrint_Click();
  ASSERT_EQ(w.windows.printed.size(), 1u);
  const auto& pages = w.windows.printed[0].pages;
  EXPECT_EQ(pages.size(), 3u);
  for (const auto& page : pages) {
    for (const auto& t : page.texts) EXPECT_LE(t.y + 10 * 1.15 / 72, 11 - 0.75 + 1e-9);
  }

  w.windows.printerChosen = false;
  w.form.cmdPrint_Click();  // cancelled: nothing
}

TEST(ReportWindow, PictureReportWindowIsNarrowAndSaveFirstStopsAll) {
  ReportProject p;
  ScriptedPrompter prompter;
  FakeReportWindows windows;
  reports::ReportForm form(p.state, prompter, windows);
  EXPECT_FALSE(reports::OpenReport(ReportKind::Full, true, form));
  EXPECT_EQ(prompter.Prompts(),
            std::vector<std::string>{"Please save the current parcel before printing reports."});
  EXPECT_EQ(form.Caption, "");

  ASSERT_TRUE(reports::OpenReport(ReportKind::Picture, false, form));
  EXPECT_EQ(form.Caption, "Parvenna report with picture");
  EXPECT_EQ(form.Width, form.cmdExport.Left);  // "Save as" stands outside
  EXPECT_GT(form.Width, form.cmdClose.Left);
  EXPECT_EQ(form.Height, form.rtfReport.Top + 405);
  EXPECT_EQ(form.frameBar.Width, form.Width);
  EXPECT_FALSE(form.rtfReport.Visible);
  EXPECT_EQ(windows.calls, (std::vector<std::string>{"EditorOffScreen", "EditorNotTopmost"}));
  form.Form_Load();
  EXPECT_EQ(form.Left, (windows.ScreenWidth() - form.Width) / 2);
  form.Form_Activate();  // no preview to build
  EXPECT_EQ(form.rtfReport.Text, "");
  form.cmdClose_Click();
  EXPECT_EQ(windows.calls.back(), "EditorTopmost");
  EXPECT_TRUE(form.Unloaded);
}

TEST(ReportWindow, ResizeGivesThePreviewTheRoomBelowTheBar) {
  ReportProject p;
  ScriptedPrompter prompter;
  FakeReportWindows windows;
  reports::ReportForm form(p.state, prompter, windows);
  form.ScaleWidth = 12000;
  form.ScaleHeight = 8000;
  form.Form_Resize();
  EXPECT_EQ(form.rtfReport.Height, 8000 - form.frameBar.Height);
  EXPECT_EQ(form.rtfReport.Width, 12000);
  form.ScaleHeight = 100;
  form.Form_Resize();
  EXPECT_EQ(form.rtfReport.Height, 8000 - form.frameBar.Height);
}

TEST(WorkFiles, BesideTheProgramOrInTheUsersCache) {
  EXPECT_EQ(reports::WorkFilePath("/opt/p/", "temp.rpt"), "/opt/p/temp.rpt");
  EXPECT_EQ(reports::WorkFilePath("/opt/p", "temp.rpt"), "/opt/p/temp.rpt");
  EXPECT_EQ(reports::WorkFilePath("C:\\p\\", "temp.rpt"), "C:\\p\\temp.rpt");

  ReportProject p;
  AddTwoParcels(p);
  TempDir cache;
  const char* old = std::getenv("XDG_CACHE_HOME");
  const std::string saved = old ? old : "";
  setenv("XDG_CACHE_HOME", cache.path().c_str(), 1);
  p.state.AppDirectory = (p.dir / "not-there").string();  // cannot be written
  OpenWindow w(p, ReportKind::Full);
  if (old) setenv("XDG_CACHE_HOME", saved.c_str(), 1);
  else unsetenv("XDG_CACHE_HOME");
  EXPECT_EQ(w.form.ReportTextPath, (cache.path() / "Parvenna" / "temp.rpt").string());
  EXPECT_EQ(Blocks(w), 2u);
}

TEST(ReportWindow, AMissingProjectFileFailsTheLoadWithTheStoresError) {
  ReportProject p;
  p.state.ProjectFile = (p.dir / "gone.pvd").string();
  ScriptedPrompter prompter;
  FakeReportWindows windows;
  reports::ReportForm form(p.state, prompter, windows);
  reports::OpenReport(ReportKind::Full, false, form);
  try {
    form.Form_Load();
    FAIL();
  } catch (const RunError& e) {
    EXPECT_EQ(e.Code(), 3024);
  }
}

}  // namespace
}  // namespace parvenna::testing
