// parvenna-editor-demo PROJECT.pvd [--parcel N] [--zoom] [--edit]
//
// The editor window on one project file, before the main window exists: the
// project's settings are read, its parcels listed, and the first (or the N-th)
// shown. The drawing and the main menu are not there.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include <QApplication>

#include "editor/editor_form.h"
#include "platform/run_error.h"
#include "store/project_file.h"
#include "store/project_opening.h"
#include "store/system_store.h"
#include "ui/editor_window.h"
#include "ui/painter_canvas.h"
#include "ui/qt_prompter.h"

namespace {

using namespace parvenna;

// The editor's requests to the windows around it: only the row menu exists.
class DemoHost : public editor::EditorHost {
 public:
  ui::EditorWindow* window = nullptr;
  void BringUpDrawing() override {}
  void MinimizeEditor() override {
    if (window) window->showMinimized();
  }
  void ShowRowMenu(int row) override {
    if (window) window->ShowRowMenu(row);
  }
};

// Opening a project asks the windows for much that the demo does not have.
class DemoWindows : public store::ProjectWindows {
 public:
  std::optional<std::string> ShowOpen(const store::FileDialogRequest&) override { return {}; }
  bool SaveEnabled() const override { return false; }
  void SetEditorTopmost(bool) override {}
  void SetCaptions(const std::string&, const std::string&) override {}
  void ShowForeColourMenu(int) override {}
  void ShowBackColourMenu() override {}
  void EnableEditorFrames(bool) override {}
  void ShowDrawingPath(const std::string&) override {}
  void SetCurrentCadEnabled(bool) override {}
  bool OpenDrawing() override { return true; }
  void SettingsLoaded() override {}
  void ShowParcels() override {}
  void ClearEditingFlag() override {}
  void ShowOpenedProject() override {}
  void ShowEditor() override {}
  void ShowNewParcelState() override {}
  void RefreshParcelList() override {}
  void LayoutArcFields() override {}
  void CalculateAndDraw() override {}
};

int Usage() {
  std::cerr << "usage: parvenna-editor-demo PROJECT.pvd [--parcel N] [--zoom] [--edit]\n";
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  std::string path;
  int parcelIndex = 0;
  bool zoom = false, edit = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--parcel" && i + 1 < argc) parcelIndex = std::atoi(argv[++i]);
    else if (arg == "--zoom") zoom = true;
    else if (arg == "--edit") edit = true;
    else if (path.empty() && arg.rfind("--", 0) != 0) path = arg;
    else return Usage();
  }
  if (path.empty()) return Usage();

  store::ProjectState state;
  state.AppDirectory = QCoreApplication::applicationDirPath().toStdString();
  state.ProjectFile = std::filesystem::absolute(path).string();
  ui::QtPrompter prompter;
  if (!store::CheckProjectFile(state, prompter)) return 1;
  store::SystemStore system(state.AppDirectory);
  store::RecentMenu recent;
  DemoWindows windows;
  store::ProjectOpener opener(state, prompter, system, recent, windows);
  opener.LoadProjectSettings();

  ui::PainterCanvas canvas;
  DemoHost host;
  editor::EditorForm form(state, prompter, canvas, host);
  ui::EditorWindow window(form, canvas);
  host.window = &window;
  prompter.SetParent(&window);
  window.bind();
  window.setWindowTitle(QString("Parvenna - ") +
                        QString::fromStdString(std::filesystem::path(path).filename().string()));
  try {
    form.LayoutArcFields();
    form.SetTabOrder();
    form.EnableEditorFrames(true);
    form.Show_Parcels();
    if (parcelIndex > 0) form.SetListIndex(parcelIndex);
    if (edit) form.cmdEdit_Click();
    if (zoom) form.ToggleSketchZoom();
  } catch (const RunError& e) {
    std::cerr << "The project could not be shown: " << e.what() << "\n";
    return 1;
  }
  window.Refresh();
  window.show();
  return app.exec();
}
