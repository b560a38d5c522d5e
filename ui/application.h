#pragma once

#include <QApplication>

namespace parvenna::ui {

// The event loop of the program. A failure that no handler caught gets the
// box "Unkown Error Number ... has occured." and the program carries on.
class Application : public QApplication {
 public:
  Application(int& argc, char** argv);
  bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace parvenna::ui
