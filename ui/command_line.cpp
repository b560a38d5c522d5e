#include "ui/command_line.h"

#include <QDir>

namespace parvenna::ui {

std::string CommandLineOf(QStringList arguments, const QString& currentDirectory) {
  if (!arguments.isEmpty()) arguments.removeFirst();
  QString line = arguments.join(' ');
  QString path = line;
  path.remove('"');
  if (!path.trimmed().isEmpty() && QDir::isRelativePath(path)) {
    line = currentDirectory + '/' + path;
  }
  return line.toStdString();
}

}  // namespace parvenna::ui
