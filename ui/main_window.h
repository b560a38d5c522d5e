#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QMainWindow>
#include <QPointer>

#include "drawing/view_host.h"
#include "shell/shell.h"
#include "shell/shell_windows.h"
#include "ui/painter_canvas.h"
#include "ui/qt_prompter.h"
#include "ui/showing_prompter.h"

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace parvenna::ui {

class CreateDialog;
class DrawingWindow;
class EditorWindow;
class ReportWindow;
class SettingDialog;

// The main window: the menu bar of the shell's model, and the editor and the
// drawing as windows inside it, the editor kept above the drawing while the
// program is in front. It carries out what the shell asks of real windows.
class MainWindow : public QMainWindow, public shell::ShellWindows, public drawing::ViewHost {
 public:
  // Message boxes go through `prompter` when one is given, else as QMessageBox.
  explicit MainWindow(const std::string& appDirectory, Prompter* prompter = nullptr);
  ~MainWindow() override;

  // The start of the program; false when it must end (the box was shown).
  bool Start(const std::string& commandLine);

  shell::Shell& Shell() { return *shell_; }
  EditorWindow& Editor() { return *editor_; }
  DrawingWindow& Drawing() { return *drawing_; }
  // Menus, editor and captions read again from the models.
  void RefreshAll();
  // Carries out a menu entry as a click on it would.
  void Trigger(const std::string& name, int index = 0);

  // ---- shell::ShellWindows ----
  std::optional<std::string> ShowOpen(const store::FileDialogRequest& request) override;
  void SetCaptions(const std::string& editorCaption, const std::string& mainCaption) override;
  void SetEditorTopmost(bool topmost) override;
  void ShowMain() override;
  void ShowEditor() override;
  void MinimizeEditor() override;
  void MinimizeMain() override;
  void CloseMain() override;
  void BringUpDrawing() override;
  void RefreshDrawing() override;
  double AreaWidth() const override;
  double AreaHeight() const override;
  void ShowRowMenu(int row) override;
  void ShowCreateDialog() override;
  void ShowSettingDialog() override;
  void ShowAbout(const std::string& credits) override;
  void ShowReport(const std::string& caption) override;
  bool OpenUrl(const std::string& url) override;

  // ---- drawing::ViewHost ----
  void EditorChanged() override;
  void PlaceWindows(const drawing::WindowRect& editor, const drawing::WindowRect& view) override;
  void FollowArea(const drawing::WindowRect& editor, const drawing::WindowRect& view) override;
  void RestoreEditor() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Entry {
    QAction* action;
    MenuItem* item;
    std::string name;
    int index;
  };
  void BuildMenus();
  void AddEntries(QMenu* menu, const std::vector<shell::MenuNode>& nodes);
  void RefreshMenus();
  void KeepEditorAbove();
  // Runs a handler of the models; a failure nothing else caught gets the
  // program's unknown-error box, and the program goes on.
  void Run(const std::function<void()>& handler);

  QtPrompter qtPrompter_;
  Prompter& prompter_;
  ShowingPrompter formPrompter_;  // the forms' boxes, shown over what the windows hold
  PainterCanvas canvas_;
  std::unique_ptr<shell::Shell> shell_;
  QMdiArea* area_ = nullptr;
  EditorWindow* editor_ = nullptr;
  DrawingWindow* drawing_ = nullptr;
  QMdiSubWindow* editorSub_ = nullptr;
  QMdiSubWindow* drawingSub_ = nullptr;
  QPointer<ReportWindow> report_;  // the open report window, if any
  // Made when first asked for.
  CreateDialog* create_ = nullptr;
  SettingDialog* setting_ = nullptr;
  std::vector<Entry> entries_;
  std::vector<std::pair<QMenu*, MenuItem*>> topMenus_;
  bool editorTopmost_ = true;
  QRect editorPlaced_;  // where a layout last put the editor
  bool closing_ = false;
};

}  // namespace parvenna::ui
