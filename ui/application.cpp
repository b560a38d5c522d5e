#include "ui/application.h"

#include <clocale>

#include "shell/messages.h"
#include "store/places.h"
#include "ui/guarded.h"
#include "ui/qt_prompter.h"

namespace parvenna::ui {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  // Qt takes the user's locale for the C library too; the program's numbers
  // are always written and read with a point, whatever the desktop's language.
  std::setlocale(LC_NUMERIC, "C");
  // The name also names the user's data and cache directories (store/places.h).
  setApplicationName(store::kApplicationName);
  setApplicationVersion(shell::messages::Version);
}

bool Application::notify(QObject* receiver, QEvent* event) {
  bool handled = false;
  QtPrompter prompter;
  RunGuarded(prompter, [&] { handled = QApplication::notify(receiver, event); });
  return handled;
}

}  // namespace parvenna::ui
