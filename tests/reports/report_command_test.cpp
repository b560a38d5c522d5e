// parvenna-cli report: the window's reports from a script, and the picture
// report printed to PDF through Qt, checked with poppler's tools.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <sstream>

#include "app/cli/report_command.h"
#include "store/paths.h"
#include "tests/reports/report_fixture.h"
#include "tests/support/pdf_pages.h"
#include "ui/report_printer.h"

namespace parvenna::testing {
namespace {

const std::string B = "\u00B0";

struct CliRun {
  int status;
  std::string out, err;
};

CliRun Report(const ReportProject& p, std::vector<std::string> args) {
  std::ostringstream out, err;
  const int status =
      cli::RunReport(args, out, err, ui::MakePdfPrinter, p.Directory());
  return {status, out.str(), err.str()};
}

std::string Shell(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return output;
  std::array<char, 4096> buffer{};
  while (fgets(buffer.data(), buffer.size(), pipe)) output += buffer.data();
  pclose(pipe);
  return output;
}

void AddParcels(ReportProject& p) {
  p.AddParcel("Lot 1", "0", {Line(0, "N0" + B + "0'0\"E", "100"),
                             Curve(1, "N90" + B + "0'0\"E", "100", "120", "60", 0),
                             Line(2, "S0" + B + "0'0\"E", "100"), Line(3, "S90" + B + "0'0\"W", "100")});
  p.AddParcel("Lot 2", "0.5", {Line(0, "N0" + B + "0'0\"E", "10"), Line(1, "S0" + B + "0'0\"E", "9.5")});
}

TEST(ReportCommand, TextIsThePreviewsByteForByte) {
  ReportProject p;
  AddParcels(p);
  p.state.DrawingFile = store::DefaultDrawingPath(p.Directory());
  for (auto [name, kind] : {std::pair{"full", reports::ReportKind::Full},
                            std::pair{"summary", reports::ReportKind::Summary}}) {
    const CliRun run = Report(p, {name, p.Path()});
    EXPECT_EQ(run.status, 0) << run.err;
    OpenWindow w(p, kind);
    EXPECT_EQ(run.out, w.form.rtfReport.Text) << name;
  }
}

TEST(ReportCommand, FiltersParcelAndFiles) {
  ReportProject p;
  AddParcels(p);
  CliRun run = Report(p, {"summary", p.Path(), "--filter", "fail"});
  EXPECT_EQ(run.out.find("Lot 1"), std::string::npos);
  EXPECT_NE(run.out.find("Lot 2"), std::string::npos);

  run = Report(p, {"full", p.Path(), "--parcel", "Lot 1", "--out", (p.dir / "r.rtf").string(),
                   "--csv", (p.dir / "r.csv").string()});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "");
  const std::string rtf = ReadFile(p.dir / "r.rtf");
  EXPECT_EQ(rtf.rfind("{\\rtf1", 0), 0u);
  EXPECT_EQ(rtf.find("Lot 2"), std::string::npos);
  EXPECT_NE(ReadFile(p.dir / "r.csv").find("\"Lot 1\",\"2\",\"N90" + B + "0'0\"\"E\",\"100.00\""),
            std::string::npos);

  run = Report(p, {"full", p.Path(), "--parcel", "Lot 9"});
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("no parcel named \"Lot 9\""), std::string::npos);
}

TEST(ReportCommand, BadArgumentsAndBadProjects) {
  ReportProject p;
  for (const auto& args : std::vector<std::vector<std::string>>{
           {}, {"long", p.Path()}, {"full"}, {"full", p.Path(), "--filter", "some"},
           {"summary", p.Path(), "--csv", "x.csv"}, {"picture", p.Path()},
           {"full", p.Path(), "--frobnicate"}}) {
    const CliRun run = Report(p, args);
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("usage: parvenna-cli report"), std::string::npos);
  }
  CliRun run = Report(p, {"full", p.Path()});  // no parcels
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("there is no data to print."), std::string::npos);

  WriteFile(p.dir / "broken.pvd", "this is no project file at all, only words");
  for (const std::string& file : {(p.dir / "broken.pvd").string(), (p.dir / "gone.pvd").string()}) {
    run = Report(p, {"summary", file});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("Can't open the project"), std::string::npos) << run.err;
  }
}

TEST(ReportCommand, PictureReportPrintsToPdf) {
  if (std::system("pdfinfo -v > /dev/null 2>&1") != 0) GTEST_SKIP() << "poppler-utils missing";
  ReportProject p;
  AddParcels(p);
  const std::string pdf = (p.dir / "picture.pdf").string();
  CliRun run = Report(p, {"picture", p.Path(), "--pdf", pdf});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(Shell("pdfinfo '" + pdf + "'").find("Pages:           2"), std::string::npos);
  const std::string text = Shell("pdftotext -layout '" + pdf + "' -");
  EXPECT_NE(text.find("CLOSURE AND AREA REPORT"), std::string::npos);
  EXPECT_NE(text.find("PARCEL: Lot 1"), std::string::npos);
  EXPECT_NE(text.find("PARCEL: Lot 2"), std::string::npos);
  EXPECT_NE(text.find("1,979.09"), std::string::npos);  // the curve's area
  EXPECT_EQ(text.find("(PASS)"), std::string::npos);

  run = Report(p, {"picture", p.Path(), "--pdf", pdf, "--filter", "pass"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(Shell("pdfinfo '" + pdf + "'").find("Pages:           1"), std::string::npos);
  EXPECT_NE(Shell("pdftotext '" + pdf + "' -").find("(PASS)"), std::string::npos);

  // The text reports print too: the preview in its fixed-pitch font.
  const std::string full = (p.dir / "full.pdf").string();
  run = Report(p, {"full", p.Path(), "--pdf", full});
  ASSERT_EQ(run.status, 0) << run.err;
  // pdftotext guesses the blanks of a layout: compare the words of the line.
  std::string words;
  for (std::istringstream in(Shell("pdftotext -layout '" + full + "' -")); in;) {
    std::string word;
    if (in >> word) words += word + " ";
  }
  EXPECT_NE(words.find("2 N90" + B + "0'0\"E 100.00 120.00 60.00 +"), std::string::npos) << words;
  EXPECT_NE(Shell("pdffonts '" + full + "'").find("Mono"), std::string::npos);
}

// A parcel without courses first in the list: the run says so and prints
// the others, each on its page of the one PDF.
TEST(ReportCommand, APictureRunWhoseFirstParcelHasNoCoursesPrintsTheOthers) {
  if (!PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  ReportProject p;
  p.AddParcel("Lot 0", "0", {});
  AddParcels(p);
  const std::string pdf = (p.dir / "picture.pdf").string();
  const CliRun run = Report(p, {"picture", p.Path(), "--pdf", pdf});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.err.find("parvenna-cli: There are no matching entries in the database.\n"),
            std::string::npos);
  EXPECT_EQ(run.err.find("Unkown Error"), std::string::npos) << run.err;
  const auto pages = ReadPdf(pdf);
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_NE(pages[0].Text().find("PARCEL: Lot 1"), std::string::npos);
  EXPECT_NE(pages[1].Text().find("PARCEL: Lot 2"), std::string::npos);
}

}  // namespace
}  // namespace parvenna::testing

#include <QFontInfo>
#include <QPlainTextEdit>
#include <QRadioButton>

#include "ui/report_window.h"

namespace parvenna::testing {
namespace {

// The window on the screen mirrors its model: the preview is the report's
// text, the bar has the model's captions, a click on an option rebuilds.
TEST(ReportWindowWidget, MirrorsTheModel) {
  ui::EnsureApplication();
  ReportProject p;
  AddParcels(p);
  ScriptedPrompter prompter;
  ui::ReportWindow window(p.state, prompter, nullptr, nullptr);
  window.Open(reports::ReportKind::Full, false);
  EXPECT_EQ(window.windowTitle().toStdString(), "Parvenna full report");
  auto* preview = window.findChild<QPlainTextEdit*>();
  ASSERT_NE(preview, nullptr);
  std::string text = window.form().rtfReport.Text;
  std::erase(text, '\r');
  EXPECT_EQ(preview->toPlainText().toStdString(), text);
  EXPECT_TRUE(QFontInfo(preview->font()).fixedPitch());
  auto radios = window.findChildren<QRadioButton*>();
  ASSERT_EQ(radios.size(), 3);
  EXPECT_TRUE(radios[0]->isChecked());
  radios[2]->click();  // Fail: Lot 2 alone
  EXPECT_EQ(preview->toPlainText().toStdString().find("Lot # Lot 1"), std::string::npos);
  EXPECT_NE(preview->toPlainText().toStdString().find("Lot # Lot 2"), std::string::npos);
  window.close();
}

}  // namespace
}  // namespace parvenna::testing
