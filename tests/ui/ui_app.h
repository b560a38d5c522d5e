#pragma once

#include <cstdlib>

#include <QApplication>

namespace parvenna::ui::testing {

// The one application object of the widget tests, on the offscreen platform
// unless another was asked for.
inline QApplication& TestApp() {
  static int argc = 1;
  static char name[] = "test_ui";
  static char* argv[] = {name, nullptr};
  static QApplication* app = [] {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    return new QApplication(argc, argv);
  }();
  return *app;
}

}  // namespace parvenna::ui::testing
