#include "ui/main_window.h"
#include "ui/guarded.h"

#include <algorithm>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QUrl>
#include <QWindowStateChangeEvent>

#include "shell/messages.h"
#include "ui/about_dialog.h"
#include "ui/create_dialog.h"
#include "ui/drawing_window.h"
#include "ui/editor_window.h"
#include "ui/report_window.h"
#include "ui/setting_dialog.h"
#include "ui/twips.h"

namespace parvenna::ui {
namespace {

// "Parvenna Files (*.pvd)|*.pvd|All Files (*.*)|*.*" as the file dialog's filters.
QString NameFilters(const std::string& filter) {
  QStringList names;
  std::size_t start = 0;
  int position = 0;
  while (start <= filter.size()) {
    const std::size_t bar = filter.find('|', start);
    const std::string part = filter.substr(start, bar == std::string::npos ? bar : bar - start);
    if (position++ % 2 == 0) names << Q(part);
    if (bar == std::string::npos) break;
    start = bar + 1;
  }
  return names.join(";;");
}

// The entries that carry a tick.
bool Checkable(const std::string& name) {
  static const char* const names[] = {"mnuWhite",       "mnuBlack",      "mnuYellow",
                                      "mnuBlue",        "mnuFOriginal",  "mnuFWhite",
                                      "mnuFBlack",      "mnuFYellow",    "mnuFBlue",
                                      "mnuVerfyCurves", "mnuAutoInvert", "mnuVerfyTangent",
                                      "mnuMiniWindow"};
  for (const char* n : names) {
    if (name == n) return true;
  }
  return false;
}

}  // namespace

MainWindow::MainWindow(const std::string& appDirectory, Prompter* prompter)
    : qtPrompter_(this),
      prompter_(prompter ? *prompter : qtPrompter_),
      formPrompter_(prompter_,
                    [this] {
                      if (editor_) editor_->Refresh();
                    }),
      shell_(std::make_unique<shell::Shell>(appDirectory, formPrompter_, canvas_, *this)) {
  setObjectName("frmMain");
  setWindowTitle("Parvenna");
  area_ = new QMdiArea(this);
  area_->setBackground(QColor(128, 128, 128));
  setCentralWidget(area_);

  // The drawing's window stands behind the editor.
  shell_->frmView.SetHost(this);
  drawing_ = new DrawingWindow(shell_->frmView);
  drawing_->bind();
  drawingSub_ = area_->addSubWindow(drawing_);
  drawingSub_->setWindowTitle("Drawing");
  drawingSub_->setWindowFlags(drawingSub_->windowFlags() & ~Qt::WindowCloseButtonHint);

  editor_ = new EditorWindow(shell_->frmEditor, canvas_);
  editor_->bind();
  editor_->afterEvent = [this] { drawing_->Refresh(); };
  editorSub_ = area_->addSubWindow(editor_);
  editorSub_->installEventFilter(this);
  editorSub_->setWindowTitle("Parvenna Editor");

  BuildMenus();
  // The drawing may take the keyboard, but never the place above the editor.
  drawingSub_->installEventFilter(this);
  area_->viewport()->installEventFilter(this);
  connect(qApp, &QApplication::applicationStateChanged, this, [this](Qt::ApplicationState s) {
    shell_->Activated(s == Qt::ApplicationActive);
  });
  resize(1200, 860);
}

MainWindow::~MainWindow() {
  // The area and the application signal while the windows are taken down,
  // when this window is no longer whole: no handler of it may run then.
  disconnect(area_, nullptr, this, nullptr);
  disconnect(qApp, nullptr, this, nullptr);
  editor_->afterEvent = nullptr;
}

bool MainWindow::Start(const std::string& commandLine) {
  bool started = false;
  Run([&] { started = shell_->Start(commandLine); });
  if (!started) return false;
  RefreshAll();
  return true;
}

void MainWindow::Run(const std::function<void()>& handler) { RunGuarded(prompter_, handler); }

void MainWindow::BuildMenus() {
  for (const shell::MenuNode& top : shell_->menu.Tree()) {
    QMenu* menu = menuBar()->addMenu(Q(top.item->Caption));
    menu->setObjectName(Q(top.name));
    topMenus_.emplace_back(menu, top.item);
    const std::string name = top.name;
    connect(menu, &QMenu::aboutToShow, this, [this, name] {
      Run([&] { shell_->MenuDropDown(name); });
      RefreshMenus();
    });
    AddEntries(menu, top.children);
  }
}

void MainWindow::AddEntries(QMenu* menu, const std::vector<shell::MenuNode>& nodes) {
  int history = 0;
  for (const shell::MenuNode& node : nodes) {
    if (node.separator()) {
      menu->addSeparator();
      continue;
    }
    if (!node.children.empty()) {
      QMenu* sub = menu->addMenu(Q(node.item->Caption));
      sub->setObjectName(Q(node.name));
      entries_.push_back({sub->menuAction(), node.item, node.name, 0});
      AddEntries(sub, node.children);
      continue;
    }
    QAction* action = menu->addAction(Q(node.item->Caption));
    action->setCheckable(Checkable(node.name));
    const int index = node.name == "mnuHistory" ? history++ : 0;
    action->setObjectName(node.name == "mnuHistory" ? QString("mnuHistory(%1)").arg(index)
                                                    : Q(node.name));
    entries_.push_back({action, node.item, node.name, index});
    const std::string name = node.name;
    connect(action, &QAction::triggered, this, [this, name, index] { Trigger(name, index); });
  }
}

void MainWindow::Trigger(const std::string& name, int index) {
  Run([&] { shell_->MenuClick(name, index); });
  RefreshAll();
}

void MainWindow::RefreshMenus() {
  for (auto& [menu, item] : topMenus_) {
    menu->setTitle(Q(item->Caption));
    menu->setEnabled(item->Enabled);
  }
  for (Entry& e : entries_) {
    e.action->setText(Q(e.item->Caption));
    e.action->setEnabled(e.item->Enabled);
    e.action->setVisible(e.item->Visible);
    if (e.action->isCheckable()) e.action->setChecked(e.item->Checked);
  }
}

void MainWindow::RefreshAll() {
  RefreshMenus();
  editor_->Refresh();
  drawing_->Refresh();
}

// ---- shell::ShellWindows ---------------------------------------------------------------

std::optional<std::string> MainWindow::ShowOpen(const store::FileDialogRequest& request) {
  const QString path = QFileDialog::getOpenFileName(this, "Open", QString(), NameFilters(request.Filter));
  if (path.isEmpty()) return std::nullopt;
  return path.toStdString();
}

void MainWindow::SetCaptions(const std::string& editorCaption, const std::string& mainCaption) {
  editorSub_->setWindowTitle(Q(editorCaption));
  setWindowTitle(Q(mainCaption));
}

void MainWindow::SetEditorTopmost(bool topmost) {
  editorTopmost_ = topmost;
  if (topmost) editorSub_->raise();
}

void MainWindow::ShowMain() {
  showMaximized();
  QCoreApplication::processEvents();
}

void MainWindow::ShowEditor() {
  if (editorSub_->isMinimized() || editorSub_->isHidden()) editorSub_->showNormal();
  editorSub_->raise();
}

void MainWindow::MinimizeEditor() { editorSub_->showMinimized(); }

void MainWindow::MinimizeMain() { showMinimized(); }

void MainWindow::CloseMain() { close(); }

void MainWindow::BringUpDrawing() {
  // Brought up where it stands: the layout the user chose is kept.
  if (drawingSub_->isMinimized() || drawingSub_->isHidden()) drawingSub_->showNormal();
  editorSub_->raise();
}

void MainWindow::RefreshDrawing() { drawing_->Refresh(); }

double MainWindow::AreaWidth() const { return Twips(area_->viewport()->width()); }

double MainWindow::AreaHeight() const { return Twips(area_->viewport()->height()); }

void MainWindow::EditorChanged() { editor_->Refresh(); }

namespace {
// A window inside the area at a place of the layouts. Not maximised: a
// maximised window would make every window it passes the focus to maximised
// too, the editor included.
void Place(QMdiSubWindow* window, const drawing::WindowRect& r) {
  if (window->isMaximized() || window->isMinimized() || window->isHidden()) window->showNormal();
  window->setGeometry(Px(r.Left), Px(r.Top), Px(r.Width), Px(r.Height));
}
}  // namespace

void MainWindow::PlaceWindows(const drawing::WindowRect& editor, const drawing::WindowRect& view) {
  Place(drawingSub_, view);
  Place(editorSub_, editor);
  editorPlaced_ = editorSub_->geometry();
  editorSub_->raise();
}

void MainWindow::FollowArea(const drawing::WindowRect& editor, const drawing::WindowRect& view) {
  Place(drawingSub_, view);
  // The window manager maximises the main window after the start's layout:
  // an editor still where that layout put it grows with the area.
  if (editorSub_->geometry() == editorPlaced_) {
    Place(editorSub_, editor);
    editorPlaced_ = editorSub_->geometry();
  }
  KeepEditorAbove();
}

void MainWindow::RestoreEditor() { ShowEditor(); }

void MainWindow::ShowRowMenu(int row) { editor_->ShowRowMenu(row); }

void MainWindow::ShowCreateDialog() {
  if (!create_) {
    create_ = new CreateDialog(shell_->frmCreate, prompter_, this);
    // A project made by the dialog is open once it goes: menus and editor follow.
    create_->installEventFilter(this);
  }
  create_->ShowForm();
}

void MainWindow::ShowSettingDialog() {
  if (!setting_) {
    setting_ = new SettingDialog(shell_->frmSetting, prompter_, this);
    setting_->installEventFilter(this);
  }
  setting_->ShowForm();
}

void MainWindow::ShowAbout(const std::string& credits) {
  AboutDialog(shell_->VersionText, credits, this).exec();
}

void MainWindow::ShowReport(const std::string& caption) {
  // Each opening is a window of its own, loaded from the project file as it
  // stands now; one still open gives way to it.
  if (report_) report_->close();
  // The editor stays inside the main window, whose rules keep it above the
  // drawing; the report window leaves its placing alone.
  report_ = new ReportWindow(shell_->state, prompter_, &shell_->frmEditor, nullptr, this);
  report_->setAttribute(Qt::WA_DeleteOnClose);
  report_->setWindowFlag(Qt::Window);
  report_->SetHooks({[this] { RefreshAll(); }, [this](const std::string& name) { Trigger(name); },
                     [this](const std::function<void()>& handler) { Run(handler); }});
  // The menu's guard has passed: the editor's Save is off.
  report_->Open(reports::KindOfCaption(caption), false);
}

bool MainWindow::OpenUrl(const std::string& url) { return QDesktopServices::openUrl(QUrl(Q(url))); }

// ---- Events ------------------------------------------------------------------------------

void MainWindow::closeEvent(QCloseEvent* event) {
  bool mayClose = false;
  Run([&] { mayClose = shell_->QueryUnload(); });
  if (!mayClose) {
    event->ignore();
    return;
  }
  closing_ = true;
  event->accept();
}

void MainWindow::KeepEditorAbove() {
  const QList<QMdiSubWindow*> stack = area_->subWindowList(QMdiArea::StackingOrder);
  if (!stack.isEmpty() && stack.last() != editorSub_) editorSub_->raise();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  // A click raises the drawing after its handlers ran, and the area lowers a
  // minimised window among the others: the editor goes back on top once
  // either is done.
  if ((watched == drawingSub_ || watched == editorSub_) && event->type() == QEvent::ZOrderChange) {
    QMetaObject::invokeMethod(this, [this] { KeepEditorAbove(); }, Qt::QueuedConnection);
  }
  // The editor back from being minimised places the values that wait for
  // it; any other change of its state (the focus coming to it) does not.
  if (watched == editorSub_ && event->type() == QEvent::WindowStateChange &&
      (static_cast<QWindowStateChangeEvent*>(event)->oldState() & Qt::WindowMinimized) &&
      !editorSub_->isMinimized() && !isMinimized()) {
    Run([this] { shell_->frmView.PlaceWaitingValues(); });
  }
  // The windows inside follow the area's size.
  if (watched == area_->viewport() && event->type() == QEvent::Resize) {
    Run([this] { shell_->frmView.AreaResized(AreaWidth(), AreaHeight()); });
  }
  if ((watched == create_ || watched == setting_) && event->type() == QEvent::Hide) {
    RefreshAll();
    return false;
  }
  // Closing the editor closes the program, after the same question.
  if (watched == editorSub_ && event->type() == QEvent::Close && !closing_) {
    event->ignore();
    close();
    return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

void MainWindow::changeEvent(QEvent* event) {
  // The editor goes down and comes back with the main window.
  if (event->type() == QEvent::WindowStateChange && !isMinimized() && editorSub_->isMinimized()) {
    editorSub_->showNormal();
  }
  QMainWindow::changeEvent(event);
}

}  // namespace parvenna::ui
