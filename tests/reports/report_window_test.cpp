// The report window on the screen (offscreen platform), driven through its
// controls, printing through the real Qt printer into PDF files that are read
// back with poppler: what reaches the paper, page by page.
#include <gtest/gtest.h>

#include <cctype>
#include <sstream>

#include <QAction>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTest>

#include "editor/editor_form.h"
#include "reports/recorded_picture.h"
#include "tests/reports/report_fixture.h"
#include "tests/support/pdf_pages.h"
#include "ui/report_printer.h"
#include "ui/report_window.h"

namespace parvenna::testing {
namespace {

using reports::ReportKind;

const std::string B = "\u00B0";

std::string Dir(int degrees, const std::string& from, const std::string& to) {
  return from + std::to_string(degrees) + B + "0'0\"" + to;
}

// The print dialog's answer "Print to File (PDF)" with this file name.
ui::ReportWindow::PrinterChooser ToPdf(const std::string& path, std::vector<bool>* asked = nullptr) {
  return [path, asked](bool selection) {
    if (asked) asked->push_back(selection);
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(QString::fromStdString(path));
    return printer;
  };
}

class NoHost : public editor::EditorHost {
 public:
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

// The report window over a project, with the editor that the picture report
// steps, printing into `pdf`.
struct ShownWindow {
  struct Application {
    Application() { ui::EnsureApplication(); }
  } application;
  ScriptedPrompter prompter;
  reports::RecordedPicture sketch;
  NoHost host;
  editor::EditorForm editor;
  ui::ReportWindow window;
  std::string pdf;

  ShownWindow(ReportProject& p, ReportKind kind)
      : editor(p.state, prompter, sketch, host),
        window(p.state, prompter, &editor, nullptr),
        pdf((p.dir / "printed.pdf").string()) {
    editor.Parcel_Bound();
    window.SetPrinterChooser(ToPdf(pdf));
    window.Open(kind, false);
  }
  template <class W>
  W* Find(const char* name) {
    return window.findChild<W*>(name);
  }
  void ClickPrint() {
    auto* print = Find<QPushButton>("cmdPrint");
    ASSERT_NE(print, nullptr);
    QTest::mouseClick(print, Qt::LeftButton);
  }
  // A picture run, answered Yes: the pages of the PDF.
  std::vector<PdfPage> PrintPictures() {
    prompter.Answer({MsgAnswer::Yes});
    ClickPrint();
    return ReadPdf(pdf);
  }
};

// A closed rectangle, `north` by `east`.
std::vector<StoredRow> Rectangle(const std::string& north, const std::string& east) {
  return {Line(0, Dir(0, "N", "E"), north), Line(1, Dir(90, "N", "E"), east),
          Line(2, Dir(0, "S", "E"), north), Line(3, Dir(90, "S", "W"), east)};
}

// Parcels whose lengths run from tens to thousands of feet.
void AddLots(ReportProject& p, int count) {
  for (int i = 1; i <= count; ++i) {
    char name[16];
    std::snprintf(name, sizeof name, "Lot %05d", i);
    p.AddParcel(name, "0", Rectangle(std::to_string(1000 + i) + ".5", "20"));
  }
}

// A block chosen in the preview is what reaches the paper: the selection
// that the preview shows without CR is found in the report's CR LF text.
TEST(ReportWindowPrinting, TheSelectionPrintsTheLotSelected) {
  if (!PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  ReportProject p;
  AddLots(p, 60);
  ShownWindow w(p, ReportKind::Full);
  auto* preview = w.Find<QPlainTextEdit>("rtfReport");
  ASSERT_NE(preview, nullptr);
  const QString shown = preview->toPlainText();
  const qsizetype start = shown.indexOf("Lot Closure Report - Lot # Lot 00046");
  const qsizetype end = shown.indexOf("\nAREA ", start) + 1;
  ASSERT_GT(start, 0);
  ASSERT_GT(end, start);
  QTextCursor cursor = preview->textCursor();
  cursor.setPosition(static_cast<int>(start));
  cursor.setPosition(static_cast<int>(end + 4), QTextCursor::KeepAnchor);
  preview->setTextCursor(cursor);
  std::vector<bool> asked;
  w.window.SetPrinterChooser(ToPdf(w.pdf, &asked));
  w.ClickPrint();
  EXPECT_EQ(asked, std::vector<bool>{true});  // the dialog offered the selection

  const auto pages = ReadPdf(w.pdf);
  ASSERT_EQ(pages.size(), 1u);
  const std::string text = pages[0].Text();
  EXPECT_EQ(text.rfind("Lot Closure Report - Lot # Lot 00046", 0), 0u) << text;
  EXPECT_NE(text.find("1,046.50"), std::string::npos) << text;
  EXPECT_EQ(text.find("Lot 00045"), std::string::npos) << text;
  EXPECT_EQ(text.find("Lot 00047"), std::string::npos) << text;
  EXPECT_EQ(text.substr(text.size() - 5), "\nAREA");
}

// Three parcels printed to a PDF from the desktop: each parcel is a job of
// its own, and the one file holds them all, in order.
TEST(ReportWindowPrinting, APictureRunToPdfKeepsEveryParcelsPage) {
  if (!PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  ReportProject p;
  for (const char* name : {"Lot 101", "Lot 102", "Lot 103"}) p.AddParcel(name, "0", Rectangle("100", "50"));
  ShownWindow w(p, ReportKind::Picture);
  const auto pages = w.PrintPictures();
  ASSERT_EQ(pages.size(), 3u);
  for (std::size_t k = 0; k < pages.size(); ++k) {
    const std::string text = pages[k].Text();
    EXPECT_NE(text.find("PARCEL: Lot 10" + std::to_string(k + 1)), std::string::npos) << text;
    EXPECT_EQ(text.find("PARCEL: Lot 10" + std::to_string((k + 1) % 3 + 1)), std::string::npos);
  }
  EXPECT_EQ(w.prompter.Prompts(), std::vector<std::string>{"Print this report?"});
}

// A parcel of fifty courses runs over two pages: no line of text reaches the
// bottom margin, each course is printed once, and the second page names the
// parcel and repeats the column heads.
TEST(ReportWindowPrinting, ALongParcelBreaksBetweenRowsAndRepeatsItsHeads) {
  if (!PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  ReportProject p;
  std::vector<StoredRow> rows;
  for (int i = 0; i < 50; ++i) rows.push_back(Line(i, Dir(i % 2 ? 0 : 90, "N", "E"), "10"));
  p.AddParcel("Long Lot", "0", rows);
  ShownWindow w(p, ReportKind::Picture);
  const auto pages = w.PrintPictures();
  ASSERT_GE(pages.size(), 2u);
  std::vector<int> legs;
  for (const PdfPage& page : pages) {
    for (const PdfWord& word : page.words) {
      EXPECT_LE(word.yMax, page.height - 36) << word.text;  // half an inch from the edge
      EXPECT_GE(word.yMin, 0) << word.text;
    }
    // The leg numbers: the first column of the page's lines.
    std::istringstream lines(page.Text());
    for (std::string line; std::getline(lines, line);) {
      if (!line.empty() && std::isdigit(static_cast<unsigned char>(line[0]))) legs.push_back(std::stoi(line));
    }
    EXPECT_NE(page.Text().find("PARCEL: Long Lot"), std::string::npos) << page.Text();
  }
  std::vector<int> expected(50);
  for (int i = 0; i < 50; ++i) expected[static_cast<std::size_t>(i)] = i + 1;
  EXPECT_EQ(legs, expected);
  const std::string second = pages[1].Text();
  EXPECT_NE(second.find("LEG BEARING LENGTH ARCLENGTH RADIUS ARCAREA +/-"), std::string::npos)
      << second;
}

// The blank-padded columns of the picture page stand right-aligned: every
// length ends at the same place, whatever its digits.
TEST(ReportWindowPrinting, ThePicturePagesColumnsLineUp) {
  if (!PopplerAvailable()) GTEST_SKIP() << "poppler-utils missing";
  ReportProject p;
  p.AddParcel("Lot 7", "0", Rectangle("1320", "11.11"));
  ShownWindow w(p, ReportKind::Picture);
  const auto pages = w.PrintPictures();
  ASSERT_EQ(pages.size(), 1u);
  std::vector<double> ends;
  for (const PdfWord& word : pages[0].words) {
    if (word.text == "1,320.00" || word.text == "11.11") ends.push_back(word.xMax);
  }
  ASSERT_EQ(ends.size(), 4u);
  for (double end : ends) EXPECT_NEAR(end, ends[0], 0.5);
}

// The window's own Help menu runs its namesakes of the main menu.
TEST(ReportWindowMenus, TheHelpMenuRunsTheMainMenusEntries) {
  ReportProject p;
  AddLots(p, 1);
  ShownWindow w(p, ReportKind::Summary);
  std::vector<std::string> run;
  ui::ReportWindow::Hooks hooks;
  hooks.mainMenu = [&](const std::string& name) { run.push_back(name); };
  w.window.SetHooks(hooks);
  auto* bar = w.Find<QMenuBar>("menuBar");
  ASSERT_NE(bar, nullptr);
  const std::pair<const char*, const char*> entries[] = {
      {"mnuQuickHelp", "mnuHelp"}, {"mnuAbout", "mnuAbout"}, {"mnuFAQ", "mnuFAQ"},
      {"mnuSupport", "mnuSupport"}, {"mnuComment", "mnuComment"}};
  for (const auto& [name, namesake] : entries) {
    auto* action = w.Find<QAction>(name);
    ASSERT_NE(action, nullptr) << name;
    action->trigger();
    EXPECT_EQ(run.back(), namesake);
  }
  EXPECT_EQ(w.Find<QAction>("mnuAbout")->text().toStdString(), "About Parvenna");
  EXPECT_EQ(w.Find<QAction>("mnuSupport")->text().toStdString(), "Email to support");
  EXPECT_EQ(w.Find<QAction>("mnuComment")->text().toStdString(), "Email Comment");
}

}  // namespace
}  // namespace parvenna::testing
