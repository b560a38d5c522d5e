#pragma once

#include <functional>

#include <QClipboard>
#include <QLineEdit>

namespace parvenna::ui {

// A course field: a line edit whose pasted text passes the same filter as
// typed keys, by every way of pasting (the paste keys, the field's own menu,
// the middle button). Text is not dropped into it.
class CourseFieldEdit : public QLineEdit {
 public:
  explicit CourseFieldEdit(QWidget* parent = nullptr);

  // What of a text the field lets in; unset, everything.
  std::function<QString(const QString&)> filter;

  // Inserts the text of the clipboard (or of the selection) as filtered.
  void PasteFiltered(QClipboard::Mode mode = QClipboard::Clipboard);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace parvenna::ui
