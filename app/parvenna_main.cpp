// parvenna: the closure checker's desktop program.
#include <QDir>

#include "shell/messages.h"
#include "ui/application.h"
#include "ui/command_line.h"
#include "ui/main_window.h"
#include "ui/splash_screen.h"

int main(int argc, char** argv) {
  parvenna::ui::Application app(argc, argv);
  parvenna::ui::SplashScreen splash(std::string(parvenna::shell::messages::ProgramVersion) +
                                    parvenna::shell::messages::Version);
  splash.ShowCentred();

  const std::string commandLine =
      parvenna::ui::CommandLineOf(QCoreApplication::arguments(), QDir::currentPath());

  // The main window shows itself once the system store is held: a refused
  // start leaves the splash alone on the screen with its box.
  parvenna::ui::MainWindow window(QCoreApplication::applicationDirPath().toStdString());
  if (!window.Start(commandLine)) return 1;
  splash.finish(&window);
  return app.exec();
}
