#include "ui/application.h"

#include <QMessageBox>

#include "platform/run_error.h"
#include "shell/messages.h"
#include "shell/shell.h"

namespace parvenna::ui {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  setApplicationName("Parvenna");
  setApplicationVersion("1.0.0");
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const RunError& e) {
    QMessageBox::critical(nullptr, shell::messages::UnknownErrorTitle,
                          QString::fromStdString(shell::UnknownErrorText(e.Code())));
  } catch (const std::exception&) {
    // Any other failure gets the words of the run-time's own number for it.
    QMessageBox::critical(nullptr, shell::messages::UnknownErrorTitle,
                          QString::fromStdString(shell::UnknownErrorText(5)));
  }
  return false;
}

}  // namespace parvenna::ui
