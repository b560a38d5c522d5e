#include "ui/application.h"

#include <clocale>

#include "shell/messages.h"
#include "ui/guarded.h"
#include "ui/qt_prompter.h"

namespace parvenna::ui {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  // Qt takes the user's locale for the C library too; the program's numbers
  // are always written and read with a point, whatever the desktop's language.
  std::setlocale(LC_NUMERIC, "C");
  setApplicationName("Parvenna");
  setApplicationVersion(shell::messages::Version);
}

bool Application::notify(QObject* receiver, QEvent* event) {
  bool handled = false;
  QtPrompter prompter;
  RunGuarded(prompter, [&] { handled = QApplication::notify(receiver, event); });
  return handled;
}

}  // namespace parvenna::ui
