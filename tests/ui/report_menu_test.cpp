// The report menu of the program: each opening of a report is a window built
// from the project file as it stands, and the picture report leaves the
// editor showing the parcel that it holds.
#include <gtest/gtest.h>

#include <filesystem>

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTest>

#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/ui_app.h"
#include "ui/editor_window.h"
#include "ui/main_window.h"
#include "ui/report_window.h"
#include "ui/sketch_view.h"

namespace parvenna::ui {
namespace {

namespace fs = std::filesystem;
using parvenna::testing::ScriptedPrompter;
using parvenna::testing::TempDir;

// The program on its sample project (Lot 101, 102, 103) in a directory of
// its own.
class ReportMenuTest : public ::testing::Test {
 protected:
  ReportMenuTest() {
    parvenna::testing::CopySupplied(dir.path(), {"ParvennaPro.pvs", "sample_feet.pvd", "sample_feet.dxf"});
    store::Database::Open(dir / "ParvennaPro.pvs").Execute("UPDATE tblSetting SET FirstRun = 0");
    window.show();
    started = window.Start("\"" + Project() + "\"");
  }
  ~ReportMenuTest() override { window.Shell().frmEditor.ExitConfirmed = true; }

  std::string Project() const { return (dir / "sample_feet.pvd").string(); }

  // Opens a report from the menu; the report window now on the screen.
  ReportWindow* Open(const std::string& entry) {
    window.Trigger(entry);
    ReportWindow* shown = nullptr;
    for (ReportWindow* report : window.findChildren<ReportWindow*>("frmReport")) {
      if (report->isVisible()) shown = report;
    }
    return shown;
  }
  static void Close(ReportWindow* report) {
    QTest::mouseClick(report->findChild<QPushButton*>("cmdClose"), Qt::LeftButton);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  static std::string Preview(ReportWindow* report) {
    return report->findChild<QPlainTextEdit*>("rtfReport")->toPlainText().toStdString();
  }

  QApplication& app = testing::TestApp();
  TempDir dir;
  ScriptedPrompter prompter;
  MainWindow window{dir.path().string(), &prompter};
  bool started = false;
};

// The print dialog answered with a PDF file.
ReportWindow::PrinterChooser PdfChooser(const std::string& pdf) {
  return [pdf](bool) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(QString::fromStdString(pdf));
    return printer;
  };
}

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(ReportMenuTest, AReportOpenedAgainReadsTheProjectFileAgain) {
  ASSERT_TRUE(started);
  ReportWindow* report = Open("mnuFullReport");
  ASSERT_NE(report, nullptr);
  EXPECT_TRUE(Has(Preview(report), "169.94"));
  Close(report);

  store::Database::Open(Project()).Execute(
      "UPDATE tblMeasurements SET Length = 170.25 WHERE ParcelID = 1 AND RowNo = 0");
  report = Open("mnuFullReport");
  ASSERT_NE(report, nullptr);
  EXPECT_TRUE(Has(Preview(report), "170.25"));
  EXPECT_FALSE(Has(Preview(report), "169.94"));
  const std::string saved = (dir / "lots.txt").string();
  report->form().SaveAs(saved);
  EXPECT_TRUE(Has(parvenna::testing::ReadFile(saved), "170.25"));
}

TEST_F(ReportMenuTest, AfterAnotherProjectOpensTheReportShowsItsLots) {
  ASSERT_TRUE(started);
  Close(Open("mnuFullReport"));
  const fs::path other = dir / "other.pvd";
  fs::copy_file(Project(), other);
  store::Database::Open(other).Execute("UPDATE tblParcel SET Parcel = replace(Parcel, 'Lot 1', 'Lot 2')");
  window.Shell().opener.OpenFromCommandLine("\"" + other.string() + "\"");
  window.RefreshAll();

  ReportWindow* report = Open("mnuFullReport");
  ASSERT_NE(report, nullptr);
  EXPECT_EQ(report->form().cbxParcel.List, (std::vector<std::string>{"Lot 201", "Lot 202", "Lot 203"}));
  const std::string text = Preview(report);
  EXPECT_TRUE(Has(text, "Lot # Lot 201"));
  EXPECT_FALSE(Has(text, "Lot # Lot 101")) << text;
}

TEST_F(ReportMenuTest, ASummaryAfterAFullReportIsTheSummary) {
  ASSERT_TRUE(started);
  Close(Open("mnuFullReport"));
  ReportWindow* report = Open("mnuSumReport");
  ASSERT_NE(report, nullptr);
  const std::string text = Preview(report);
  EXPECT_TRUE(Has(text, "PARCEL NAME")) << text;
  EXPECT_FALSE(Has(text, "Lot Closure Report")) << text;
  // The summary has no CSV rows: "Save as" a .csv writes nothing.
  report->form().SaveAs((dir / "summary.csv").string());
  EXPECT_FALSE(fs::exists(dir / "summary.csv"));
}

TEST_F(ReportMenuTest, ThePictureWindowShowsTheBarAloneAndAFullReportAfterItItsPreview) {
  ASSERT_TRUE(started);
  Close(Open("mnuSumReport"));
  ReportWindow* report = Open("mnuPicReport");
  ASSERT_NE(report, nullptr);
  auto* bar = report->findChild<QWidget*>("frameBar");
  EXPECT_FALSE(report->findChild<QPlainTextEdit*>("rtfReport")->isVisible());
  EXPECT_FALSE(report->findChild<QPushButton*>("cmdExport")->isVisible());
  EXPECT_LE(report->height(), bar->sizeHint().height() + 40) << "only the bar and the menu";
  Close(report);

  report = Open("mnuFullReport");
  ASSERT_NE(report, nullptr);
  EXPECT_TRUE(report->findChild<QPlainTextEdit*>("rtfReport")->isVisible());
  EXPECT_TRUE(report->findChild<QPushButton*>("cmdExport")->isVisible());
  EXPECT_TRUE(Has(Preview(report), "Lot # Lot 103"));
  bar = report->findChild<QWidget*>("frameBar");
  EXPECT_GT(report->height(), bar->height() + 200);
}

TEST_F(ReportMenuTest, APictureRunPrintsEveryParcelToOnePdfAndTheEditorShowsWhatItHolds) {
  ASSERT_TRUE(started);
  ASSERT_EQ(window.Editor().cbxParcel()->currentText().toStdString(), "Lot 101");
  ReportWindow* report = Open("mnuPicReport");
  ASSERT_NE(report, nullptr);
  const std::string pdf = (dir / "lots.pdf").string();
  report->SetPrinterChooser(PdfChooser(pdf));
  prompter.Answer({MsgAnswer::Yes});
  QTest::mouseClick(report->findChild<QPushButton*>("cmdPrint"), Qt::LeftButton);

  const editor::EditorForm& editor = window.Shell().frmEditor;
  EXPECT_EQ(editor.cbxParcel.Text, "Lot 103");
  EXPECT_EQ(window.Editor().cbxParcel()->currentText().toStdString(), editor.cbxParcel.Text);
  EXPECT_EQ(window.Editor().txtParcel()->text().toStdString(), editor.txtParcel.Text);
  // Its sketch is drawn again, with the course numbers of Lot 103 alone.
  const QImage sketch = window.Editor().picParcel()->grab().toImage();
  int dark = 0;
  for (int y = 0; y < sketch.height(); ++y) {
    for (int x = 0; x < sketch.width(); ++x) dark += qGray(sketch.pixel(x, y)) < 128;
  }
  EXPECT_GT(dark, 200) << "the sketch is drawn";
  for (int row = 0; row < 10; ++row) {
    EXPECT_EQ(window.Editor().picParcel()->LineNumber(row)->isVisible(), row < 7) << row;
  }

  if (!parvenna::testing::PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  const auto pages = parvenna::testing::ReadPdf(pdf);
  ASSERT_EQ(pages.size(), 3u);
  for (std::size_t k = 0; k < pages.size(); ++k) {
    EXPECT_TRUE(Has(pages[k].Text(), "PARCEL: Lot 10" + std::to_string(k + 1))) << pages[k].Text();
  }
}

TEST_F(ReportMenuTest, TheMapcheckOpensFromTheMenuAsksItsPrecisionAndPrintsItsPages) {
  ASSERT_TRUE(started);
  ReportWindow* report = Open("mnuMapcheckReport");
  ASSERT_NE(report, nullptr);
  EXPECT_EQ(report->windowTitle().toStdString(), "Parvenna mapcheck");
  EXPECT_TRUE(Has(Preview(report), "MAPCHECK SUMMARY")) << Preview(report);
  EXPECT_TRUE(Has(Preview(report), "MAPCHECK - Lot 103"));
  auto* ratio = report->findChild<QLineEdit*>("txtRatio");
  ASSERT_NE(ratio, nullptr);
  EXPECT_TRUE(ratio->isVisible());
  EXPECT_EQ(ratio->text().toStdString(), "10000");

  // Lot 102 (1:1,498) reaches a precision of 1:1,000.
  ratio->selectAll();
  QTest::keyClicks(ratio, "1000");
  QTest::keyClick(ratio, Qt::Key_Return);
  EXPECT_TRUE(Has(Preview(report), "precision 1:1,000")) << Preview(report);
  EXPECT_TRUE(Has(Preview(report), "Precision tolerance 1:1,000     : PASS   (1:1,498)"))
      << Preview(report);

  ratio->selectAll();
  QTest::keyClicks(ratio, "one in ten");
  QTest::keyClick(ratio, Qt::Key_Return);
  ASSERT_FALSE(prompter.shown.empty());
  EXPECT_EQ(prompter.shown.back().Prompt,
            "The precision must be a whole number from 1 to 1,000,000,000. The former value stays.");
  EXPECT_EQ(ratio->text().toStdString(), "1000");

  const std::string pdf = (dir / "mapcheck.pdf").string();
  report->SetPrinterChooser(PdfChooser(pdf));
  QTest::mouseClick(report->findChild<QPushButton*>("cmdPrint"), Qt::LeftButton);
  if (!parvenna::testing::PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  const auto pages = parvenna::testing::ReadPdf(pdf);
  ASSERT_EQ(pages.size(), 4u);
  EXPECT_TRUE(Has(pages[0].Text(), "Lot 102 4 551.63")) << pages[0].Text();
  EXPECT_TRUE(Has(pages[3].Text(), "Page 4 of 4"));
  EXPECT_TRUE(Has(pages[3].Text(), "Curve left"));
  Close(report);

  // The other reports show no precision in their bar.
  report = Open("mnuFullReport");
  ASSERT_NE(report, nullptr);
  EXPECT_FALSE(report->findChild<QLineEdit*>("txtRatio")->isVisible());
}

}  // namespace
}  // namespace parvenna::ui
