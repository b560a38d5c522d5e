#include "ui/command_line.h"

#include <QDir>

namespace parvenna::ui {

std::string CommandLineOf(QStringList arguments, const QString& currentDirectory) {
  if (!arguments.isEmpty()) arguments.removeFirst();
  QString line = arguments.join(' ');
  QString path = line;
  path.remove('"');
  // Whole and plain ("./" and "../" resolved): the one text under which the
  // recent list knows the project.
  if (!path.trimmed().isEmpty() && QDir::isRelativePath(path)) {
    line = QDir::cleanPath(QDir(currentDirectory).absoluteFilePath(path));
  }
  return line.toStdString();
}

}  // namespace parvenna::ui
