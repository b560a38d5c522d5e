#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include <QWidget>

#include "reports/report_form.h"
#include "reports/report_windows.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPrinter;
class QPushButton;
class QRadioButton;

namespace parvenna::ui {

// frmReport on the screen: the Help menu and the bar over a fixed-pitch
// preview. The window mirrors the model after each event and forwards the
// user's; the dialogs, the printer and the window calls are its part of the
// port. A window serves one opening of a report: the program makes a new
// one each time the menu opens a report, so that it reads the project file
// as it stands then.
class ReportWindow : public QWidget, public reports::ReportWindows {
 public:
  // `editorWindow` is the editor's window, moved off the screen while the
  // picture report prints from it; it may be null.
  ReportWindow(store::ProjectState& project, Prompter& prompter, editor::EditorForm* editor,
               QWidget* editorWindow, QWidget* parent = nullptr);
  ~ReportWindow() override;

  reports::ReportForm& form() { return form_; }
  // Loads and shows the window for a report the menu opened.
  void Open(reports::ReportKind kind, bool editorSaveEnabled);

  // Sets up the printer of a print, as the print dialog does (paper, or a
  // PDF file); nothing when cancelled. `selection`: the dialog offers to
  // print the selection. The print dialog unless another is given.
  using PrinterChooser = std::function<std::unique_ptr<QPrinter>(bool selection)>;
  void SetPrinterChooser(PrinterChooser chooser) { chooser_ = std::move(chooser); }

  // What the window asks of the program around it; each may be left empty.
  struct Hooks {
    // The editor's model changed under its window: the picture report steps
    // it through the parcels.
    std::function<void()> editorChanged;
    // An entry of the main menu, run from the window's Help menu by name.
    std::function<void(const std::string&)> mainMenu;
    // Runs a handler of the model, reporting what it did not catch; without
    // it a failure goes to the caller.
    std::function<void(const std::function<void()>&)> guard;
  };
  void SetHooks(Hooks hooks) { hooks_ = std::move(hooks); }

  // ---- The port --------------------------------------------------------------
  std::optional<std::string> ShowSave(const std::string& filter) override;
  std::unique_ptr<Printer> ShowPrinter(int flags) override;
  std::unique_ptr<Printer> PicturePrinter() override;
  void SetReportTopmost() override;
  void SetEditorTopmost(bool topmost) override;
  void MoveEditorOffScreen() override;
  void CenterEditor() override;
  void DoEvents() override;
  void RunMainMenu(const std::string& name) override;
  double ScreenWidth() const override;
  double ScreenHeight() const override;

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildMenu();
  void bind();
  void Refresh();
  // Runs a handler of the model, then shows the model again.
  void Run(const std::function<void()>& handler);
  void Print();
  std::unique_ptr<QPrinter> ChoosePrinter(bool selection);

  reports::ReportForm form_;
  QWidget* editorWindow_;
  QComboBox* cbxParcel_;
  QLabel* ratioLabel_;
  QLineEdit* txtRatio_;
  bool ratioBusy_ = false;  // a refusal's box takes the focus from the field
  std::array<QRadioButton*, 3> optPassFail_{};
  QPushButton *cmdExport_, *cmdPrint_, *cmdClose_;
  QPlainTextEdit* rtfReport_;
  PrinterChooser chooser_;
  Hooks hooks_;
};

}  // namespace parvenna::ui
