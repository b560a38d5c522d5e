#include "ui/control_colours.h"

#include <QWidget>

#include "ui/twips.h"

namespace parvenna::ui {

void SetControlColours(QWidget* widget, Surface surface, Rgb back, Rgb fore) {
  QPalette::ColorRole backRole = QPalette::Window;
  QPalette::ColorRole foreRole = QPalette::WindowText;
  if (surface == Surface::Field) {
    backRole = QPalette::Base;
    foreRole = QPalette::Text;
  } else if (surface == Surface::Button) {
    backRole = QPalette::Button;
    foreRole = QPalette::ButtonText;
  }
  const QColor b = ToQColor(back);
  const QColor f = ToQColor(fore);
  const QColor off((b.red() + f.red()) / 2, (b.green() + f.green()) / 2, (b.blue() + f.blue()) / 2);
  QPalette palette = widget->palette();
  for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    palette.setColor(group, backRole, b);
    palette.setColor(group, foreRole, group == QPalette::Disabled ? off : f);
  }
  // A combo box writes its text in the base's partner as well.
  if (surface == Surface::Button) {
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      palette.setColor(group, QPalette::Base, b);
      palette.setColor(group, QPalette::Text, group == QPalette::Disabled ? off : f);
    }
  }
  widget->setPalette(palette);
  if (surface == Surface::Face) widget->setAutoFillBackground(true);
}

}  // namespace parvenna::ui
