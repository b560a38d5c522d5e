#pragma once

#include <array>
#include <functional>
#include <memory>

#include <QWidget>

#include "reports/report_form.h"
#include "reports/report_windows.h"

class QComboBox;
class QPlainTextEdit;
class QPrinter;
class QPushButton;
class QRadioButton;

namespace parvenna::ui {

class QtPrinter;

// frmReport on the screen: the bar over a fixed-pitch preview. The window
// mirrors the model after each event and forwards the user's; the dialogs,
// the printer and the window calls are its part of the port.
class ReportWindow : public QWidget, public reports::ReportWindows {
 public:
  // `editorWindow` is the editor's window, moved off the screen while the
  // picture report prints from it; it may be null.
  ReportWindow(store::ProjectState& project, Prompter& prompter, editor::EditorForm* editor,
               QWidget* editorWindow, QWidget* parent = nullptr);
  ~ReportWindow() override;

  reports::ReportForm& form() { return form_; }

  // Sets up the printer of a print, as the print dialog does (paper, or a
  // PDF file); nothing when cancelled. `selection`: the dialog offers to
  // print the selection. The print dialog unless another is given.
  using PrinterChooser = std::function<std::unique_ptr<QPrinter>(bool selection)>;
  void SetPrinterChooser(PrinterChooser chooser) { chooser_ = std::move(chooser); }
  // Loads and shows the window for a report the menu opened.
  void Open(reports::ReportKind kind, bool editorSaveEnabled);

  // ---- The port --------------------------------------------------------------
  std::optional<std::string> ShowSave(const std::string& filter) override;
  std::unique_ptr<Printer> ShowPrinter(int flags) override;
  Printer* PicturePrinter() override;
  void SetReportTopmost() override;
  void SetEditorTopmost(bool topmost) override;
  void MoveEditorOffScreen() override;
  void CenterEditor() override;
  void DoEvents() override;
  double ScreenWidth() const override;
  double ScreenHeight() const override;

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void bind();
  void Refresh();
  std::unique_ptr<QPrinter> ChoosePrinter(bool selection);

  reports::ReportForm form_;
  QWidget* editorWindow_;
  QComboBox* cbxParcel_;
  std::array<QRadioButton*, 3> optPassFail_{};
  QPushButton *cmdExport_, *cmdPrint_, *cmdClose_;
  QPlainTextEdit* rtfReport_;
  std::unique_ptr<QtPrinter> picturePrinter_;
  PrinterChooser chooser_;
};

}  // namespace parvenna::ui
