#include "ui/application.h"

#include "shell/messages.h"
#include "ui/guarded.h"
#include "ui/qt_prompter.h"

namespace parvenna::ui {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
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
