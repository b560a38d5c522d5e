#pragma once

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QWidget>

#include "drawing/view_form.h"

class QHBoxLayout;
class QMenu;
class QTabWidget;
class QToolButton;

namespace parvenna::ui {

class DrawingView;

// The drawing window over a ViewForm: the bar of buttons, and the two views
// on the pages of a tab. It shows the form's state and hands the user's
// events to the form's handlers; after each event it reads the form again.
// It decides nothing itself.
//
// The shell makes it once over its ViewForm, calls bind(), calls the form's
// OpenDrawing() where a project or a colour changes and then Refresh().
class DrawingWindow : public QWidget {
 public:
  explicit DrawingWindow(drawing::ViewForm& form, QWidget* parent = nullptr);
  ~DrawingWindow() override;

  // Builds the controls and connects them to the form's handlers. Once.
  void bind();
  // Copies the form's state onto the controls, and repaints the views that
  // changed. The main window calls it after the editor's events too, since
  // they may clear the marks of the used labels.
  void Refresh();

  // The controls, for the shell and for tests.
  QTabWidget* SSTab1() const { return tabs_; }
  DrawingView* View(int view) const { return views_.at(static_cast<std::size_t>(view)); }
  QToolButton* ButtonOf(const CommandButton& button) const;
  QMenu* LayerMenu(int view) const { return layerMenus_.at(static_cast<std::size_t>(view)); }

 private:
  struct Bound {
    QToolButton* widget;
    const CommandButton* model;
  };
  // Runs a handler of the form; what no handler caught is reported as the
  // program's unknown error, and the window carries on. The outermost run
  // refreshes the window.
  void Run(const std::function<void()>& handler);
  void AfterEvent();
  QToolButton* AddButton(QHBoxLayout* bar, const char* name, CommandButton& model,
                         const QIcon& icon, const std::function<void()>& click);
  void MirrorLayerMenu(int view);

  drawing::ViewForm& form_;
  QTabWidget* tabs_ = nullptr;
  std::array<DrawingView*, drawing::kViewCount> views_{};
  std::array<QMenu*, drawing::kViewCount> layerMenus_{};
  // What each layer menu shows: caption and tick of every entry.
  std::array<std::vector<std::pair<std::string, bool>>, drawing::kViewCount> shownLayers_;
  std::vector<Bound> buttons_;
  QToolButton* overview_ = nullptr;
  int depth_ = 0;
  bool bound_ = false;
};

}  // namespace parvenna::ui
