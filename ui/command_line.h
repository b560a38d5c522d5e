#pragma once

#include <string>

#include <QString>
#include <QStringList>

namespace parvenna::ui {

// The program's command line as one text, however the desktop's shell split
// it into words (the program's own name first). A relative path is made
// whole against `currentDirectory`, so that the recent list can find the
// project again from anywhere.
std::string CommandLineOf(QStringList arguments, const QString& currentDirectory);

}  // namespace parvenna::ui
