#include "ui/course_field_edit.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

namespace parvenna::ui {

CourseFieldEdit::CourseFieldEdit(QWidget* parent) : QLineEdit(parent) { setAcceptDrops(false); }

void CourseFieldEdit::PasteFiltered(QClipboard::Mode mode) {
  if (isReadOnly()) return;
  const QString text = QGuiApplication::clipboard()->text(mode);
  const QString accepted = filter ? filter(text) : text;
  // The field's insert raises textEdited, and so the form's Change.
  if (!accepted.isEmpty()) insert(accepted);
}

void CourseFieldEdit::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) {
    PasteFiltered();
    event->accept();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void CourseFieldEdit::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  // The menu's Paste goes through the filter instead of straight in.
  for (QAction* action : menu->actions()) {
    // Qt joins the entry to paste() by name or by pointer, as its version has it.
    const bool paste = disconnect(action, SIGNAL(triggered()), this, SLOT(paste())) ||
                       disconnect(action, &QAction::triggered, this, &QLineEdit::paste);
    if (paste) {
      action->setObjectName("edit-paste");
      connect(action, &QAction::triggered, this, [this] { PasteFiltered(); });
    }
  }
  menu->popup(event->globalPos());
}

void CourseFieldEdit::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton && QGuiApplication::clipboard()->supportsSelection()) {
    deselect();
    PasteFiltered(QClipboard::Selection);
    return;
  }
  QLineEdit::mouseReleaseEvent(event);
}

}  // namespace parvenna::ui
