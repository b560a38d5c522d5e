#pragma once

#include <string>

#include <QSplashScreen>

class QPainter;

namespace parvenna::ui {

// The program's emblem: a parcel walked course by course, its last course
// stopping just short of the point of beginning.
void PaintEmblem(QPainter& painter, const QRectF& area);

// frmSplash: a small window with the program's name and lblPrgVer, shown while
// the program starts. The application shows it (ShowCentred), starts the
// program, and ends it with finish(editorWindow) once the editor stands.
class SplashScreen : public QSplashScreen {
 public:
  // versionLine: "Program Version: " followed by major, minor and revision.
  explicit SplashScreen(const std::string& versionLine);

  // The version line, once the system store is open and the version known.
  void SetVersionLine(const std::string& versionLine);
  const QString& lblPrgVer() const { return versionLine_; }

  // Centred on the screen and painted at once, before the event loop runs.
  void ShowCentred();

 private:
  void Paint();
  QString versionLine_;
};

}  // namespace parvenna::ui
