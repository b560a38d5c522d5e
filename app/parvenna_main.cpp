// parvenna: the closure checker's desktop program.
#include <QDir>
#include <QStringList>

#include "ui/application.h"
#include "ui/main_window.h"

int main(int argc, char** argv) {
  parvenna::ui::Application app(argc, argv);
  // The command line is one path, quotes and all, however the shell split it.
  QStringList words = QCoreApplication::arguments();
  words.removeFirst();
  const std::string commandLine = words.join(' ').toStdString();

  parvenna::ui::MainWindow window(QCoreApplication::applicationDirPath().toStdString());
  window.showMaximized();
  if (!window.Start(commandLine)) return 1;
  return app.exec();
}
