// parvenna: the closure checker's desktop program.
#include <QDir>
#include <QStringList>

#include "shell/messages.h"
#include "ui/application.h"
#include "ui/main_window.h"
#include "ui/splash_screen.h"

int main(int argc, char** argv) {
  parvenna::ui::Application app(argc, argv);
  parvenna::ui::SplashScreen splash(std::string(parvenna::shell::messages::ProgramVersion) +
                                    parvenna::shell::messages::Version);
  splash.ShowCentred();

  // The command line is one path, quotes and all, however the shell split it.
  // A path relative to where the program was started is made whole, so that
  // the recent list can find the project again from anywhere.
  QStringList words = QCoreApplication::arguments();
  words.removeFirst();
  QString line = words.join(' ');
  QString path = line;
  path.remove('"');
  if (!path.trimmed().isEmpty() && QDir::isRelativePath(path)) {
    line = QDir::currentPath() + '/' + path;
  }
  const std::string commandLine = line.toStdString();

  parvenna::ui::MainWindow window(QCoreApplication::applicationDirPath().toStdString());
  window.showMaximized();
  if (!window.Start(commandLine)) return 1;
  splash.finish(&window);
  return app.exec();
}
