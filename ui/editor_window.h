#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QWidget>

#include "editor/editor_form.h"
#include "ui/course_row_view.h"
#include "ui/guarded.h"
#include "ui/painter_canvas.h"
#include "ui/sketch_view.h"

namespace parvenna::ui {

// The editor window over an EditorForm. It shows the form's state and hands
// the user's events to the form's handlers; after each event it reads the
// form again (Refresh) and puts the focus where the form says it is. It
// decides nothing itself.
//
// The host of the form (EditorHost) calls ShowRowMenu when the form asks for
// the row menu; the menu opens once the event that asked for it is over.
class EditorWindow : public QWidget {
 public:
  EditorWindow(editor::EditorForm& form, PainterCanvas& canvas, QWidget* parent = nullptr);
  ~EditorWindow() override;

  // Builds the controls and connects them to the form's handlers. Once.
  void bind();
  // Copies the form's state onto the controls.
  void Refresh();
  void ShowRowMenu(int row);
  // Called after each event of the window has run, for the windows that
  // show what the editor's handlers change (the marks of the drawing).
  std::function<void()> afterEvent;

  // The controls, for the shell and for tests.
  CourseRowView& Row(int row) { return *rows_.at(static_cast<std::size_t>(row)); }
  QLabel* ResultLabel(int which) const { return results_.at(static_cast<std::size_t>(which)); }
  QLabel* lblClosure() const { return results_[0]; }
  SketchView* picParcel() const { return sketch_; }
  QPushButton* cmdZoom() const { return cmdZoom_; }
  QPushButton* cmdSave() const { return cmdSave_; }
  QPushButton* cmdInsert() const { return cmdInsert_; }
  QComboBox* cbxParcel() const { return cbxParcel_; }
  QLineEdit* txtParcel() const { return txtParcel_; }
  QScrollBar* VScroll1() const { return scroll_; }
  QMenu* RowMenu() const { return rowMenu_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  // What a widget stands for on the form.
  struct Control {
    editor::FocusKind kind = editor::FocusKind::Other;
    int row = -1;
    CourseField field = CourseField::BearingLine;
  };

  // Runs a handler of the form; what no handler caught is reported as the
  // program's unknown error, and the window carries on. The outermost run
  // refreshes the window and follows the form's focus.
  void Run(const std::function<void()>& handler, FailureReport report = FailureReport::CatchAll);
  // The handlers of the course buttons (the row buttons, their menu, the
  // invert buttons) report a failure with the way to support.
  void RunCourse(const std::function<void()>& handler) { Run(handler, FailureReport::Support); }
  void AfterEvent();
  void FollowFocus();
  QWidget* WidgetOf(const editor::FocusTarget& target) const;
  bool FilterKey(QLineEdit* edit, const Control& control, class QKeyEvent* event);
  // What a field lets in of a text, character by character as the form's key
  // filter turns it; `changed` tells whether anything was turned or refused.
  QString Filtered(const Control& control, const QString& text, bool* changed = nullptr) const;
  void PlaceRowArea();
  void MirrorAll();
  void MirrorTopControls();
  void MirrorTabOrder();
  void BuildPanel();
  void BuildRows();
  void BuildRowMenu();
  void Register(QWidget* widget, Control control);
  QPushButton* CommandButton(const char* name, const parvenna::CommandButton& model,
                             std::function<void()> click);

  editor::EditorForm& form_;
  PainterCanvas& canvas_;
  int depth_ = 0;
  std::optional<int> pendingMenuRow_;
  bool suppressClick_ = false;  // the release that ends a double click
  int topBand_ = 0;            // pixels above the rows: panel and sketch

  QWidget* panel_ = nullptr;   // list, name, results and commands, left of the sketch
  QWidget* frameBase_ = nullptr;
  QScrollBar* scroll_ = nullptr;
  SketchView* sketch_ = nullptr;
  QComboBox* cbxParcel_ = nullptr;
  QLineEdit* txtParcel_ = nullptr;
  QWidget* frame1_ = nullptr;
  QWidget* frame3_ = nullptr;
  QWidget* frame4_ = nullptr;
  std::array<QLabel*, 4> results_{};  // closure, direction, precision, area
  QPushButton *cmdPrevious_ = nullptr, *cmdNext_ = nullptr, *cmdInsert_ = nullptr,
              *cmdEdit_ = nullptr, *cmdSave_ = nullptr, *cmdCancel_ = nullptr,
              *cmdDelete_ = nullptr, *cmdAutoInverse_ = nullptr, *cmdZoom_ = nullptr;
  std::vector<std::pair<QPushButton*, const parvenna::CommandButton*>> commands_;
  std::vector<QWidget*> panelTabOrder_;
  std::vector<std::unique_ptr<CourseRowView>> rows_;
  std::unordered_map<const QObject*, Control> controls_;
  QMenu* rowMenu_ = nullptr;
  QAction* mnuPopEdit_ = nullptr;
  QAction* mnuPopChangeLineCurve_ = nullptr;
  int menuRow_ = 0;

  // What the top controls show, so that a refresh touches only what changed.
  std::vector<std::string> shownList_;
  std::vector<int> shownTabOrder_;
  std::optional<Rgb> shownListBack_, shownParcelBack_;
  std::array<std::optional<std::pair<Rgb, Rgb>>, 4> shownResultColour_{};
  QRect shownSketchRect_;
  std::string shownSketchTip_ = "\x01";
};

}  // namespace parvenna::ui
