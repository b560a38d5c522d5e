// parvenna: the closure checker's desktop program.
#include <filesystem>

#include <QDir>

#include "shell/messages.h"
#include "store/places.h"
#include "ui/application.h"
#include "ui/command_line.h"
#include "ui/main_window.h"
#include "ui/qt_prompter.h"
#include "ui/splash_screen.h"

int main(int argc, char** argv) {
  parvenna::ui::Application app(argc, argv);
  parvenna::ui::SplashScreen splash(std::string(parvenna::shell::messages::ProgramVersion) +
                                    parvenna::shell::messages::Version);
  splash.ShowCentred();

  const std::string commandLine =
      parvenna::ui::CommandLineOf(QCoreApplication::arguments(), QDir::currentPath());

  // Run from its own folder the program writes there; installed, it works on
  // the user's copies of the store and samples, made at the first start.
  const parvenna::store::Places places =
      parvenna::store::LocatePlaces(parvenna::store::ProgramDirectory());
  if (!places.Failure.empty()) {
    parvenna::ui::QtPrompter prompter;
    parvenna::Inform(prompter, places.Failure, parvenna::MsgIcon::Critical);
    return 1;
  }
  // The main window shows itself once the system store is held: a refused
  // start leaves the splash alone on the screen with its box.
  parvenna::ui::MainWindow window(places.AppDirectory);
  // A drawing read once opens from the user's cache while it is unchanged.
  window.Shell().frmView.UseDrawingCache(
      (std::filesystem::path(parvenna::store::UserDirectoriesOf().Cache) / "drawings").string());
  if (!window.Start(commandLine)) return 1;
  splash.finish(&window);
  return app.exec();
}
