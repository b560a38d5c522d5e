// The editor window's side of events: the user's events go to the form's
// handlers, and the window follows what they left behind.
#include <QApplication>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QWheelEvent>

#include "platform/run_error.h"
#include "ui/editor_window.h"
#include "ui/guarded.h"
#include "ui/twips.h"

namespace parvenna::ui {

using editor::FocusKind;
using editor::FocusTarget;

void EditorWindow::Run(const std::function<void()>& handler, FailureReport report) {
  ++depth_;
  RunGuarded(form_.prompter, handler, report);
  if (--depth_ == 0) AfterEvent();
}

void EditorWindow::AfterEvent() {
  Refresh();
  if (afterEvent) afterEvent();
  FollowFocus();
  if (pendingMenuRow_) {
    const int row = *pendingMenuRow_;
    pendingMenuRow_.reset();
    QPushButton* button = Row(row).cmdNo;
    rowMenu_->popup(button->mapToGlobal(QPoint(button->width(), 0)));
  }
}

void EditorWindow::ShowRowMenu(int row) {
  if (row < 0 || row >= CourseLimit) return;
  pendingMenuRow_ = row;
  if (depth_ == 0) AfterEvent();
}

QWidget* EditorWindow::WidgetOf(const FocusTarget& target) const {
  switch (target.kind) {
    case FocusKind::Field:
      return rows_.at(static_cast<std::size_t>(target.row))->Field(target.field);
    case FocusKind::RowButton: return rows_.at(static_cast<std::size_t>(target.row))->cmdNo;
    case FocusKind::Parcel: return txtParcel_;
    case FocusKind::ParcelList: return cbxParcel_;
    case FocusKind::ScrollBar: return scroll_;
    default: return nullptr;
  }
}

void EditorWindow::FollowFocus() {
  QWidget* target = WidgetOf(form_.focus);
  if (!target || target == QApplication::focusWidget() || !target->isEnabled()) return;
  if (!target->isVisibleTo(this)) return;
  // The form already knows: the FocusIn that follows finds nothing to change.
  target->setFocus(Qt::OtherFocusReason);
}

// ---- The user's events -------------------------------------------------------------

bool EditorWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == frameBase_ && event->type() == QEvent::Wheel) {
    // The wheel over the rows steps the bar by its small change, within the
    // rows in use.
    const int delta = static_cast<QWheelEvent*>(event)->angleDelta().y();
    if (delta != 0 && scroll_->isEnabled()) {
      Run([this, delta] { form_.VScroll1_Wheel(delta > 0 ? -1 : 1); });
    }
    return true;
  }
  const auto found = controls_.find(watched);
  if (found == controls_.end()) return QWidget::eventFilter(watched, event);
  const Control control = found->second;

  switch (event->type()) {
    case QEvent::FocusIn: {
      // Switching windows and closing menus or boxes move no focus on the form.
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (depth_ > 0 || reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) {
        break;
      }
      const FocusTarget target{control.kind, control.row, control.field};
      Run([this, target] { form_.SetFocus(target); });
      break;
    }
    case QEvent::KeyPress:
      if (control.kind == FocusKind::Field && depth_ == 0) {
        return FilterKey(static_cast<QLineEdit*>(watched), control, static_cast<QKeyEvent*>(event));
      }
      break;
    case QEvent::MouseButtonDblClick:
      if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) break;
      if (control.kind == FocusKind::Field) {
        suppressClick_ = true;
        Run([this, control] { form_.Field_DblClick(control.row, control.field); });
      } else if (control.kind == FocusKind::Parcel) {
        suppressClick_ = true;
        Run([this] { form_.txtParcel_DblClick(); });
      }
      break;
    case QEvent::MouseButtonRelease: {
      const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
      if (control.kind == FocusKind::RowButton &&
          (button == Qt::LeftButton || button == Qt::RightButton)) {
        RunCourse([this, control] { form_.cmdNo_MouseUp(control.row); });
        // The menu takes the release; the button must not click as well.
        static_cast<QPushButton*>(watched)->setDown(false);
        return true;
      }
      if (button != Qt::LeftButton) break;
      if (suppressClick_) {
        suppressClick_ = false;
        break;
      }
      if (control.kind == FocusKind::Field) {
        Run([this, control] { form_.Field_Click(control.row, control.field); });
      } else if (control.kind == FocusKind::Parcel) {
        Run([this] { form_.txtParcel_Click(); });
      }
      break;
    }
    default: break;
  }
  return QWidget::eventFilter(watched, event);
}

// The field's key filter decides what a typed character becomes. Keys that
// type nothing (arrows, Home, Delete, Tab) are not its business, nor are the
// editing keys with Control (select all, copy, cut, undo); a paste goes
// through the filter in the field itself.
bool EditorWindow::FilterKey(QLineEdit* edit, const Control& control, QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Delete) return false;
  const Qt::KeyboardModifiers modifiers = event->modifiers();
  if ((modifiers & Qt::ControlModifier) && !(modifiers & Qt::AltModifier)) return false;
  QString typed = event->text();
  if (key == Qt::Key_Backspace) typed = QString(QChar(8));
  if (typed.isEmpty()) return false;
  bool changed = false;
  const QString accepted = Filtered(control, typed, &changed);
  if (!changed) return false;  // the field takes the key as it came
  if (!accepted.isEmpty()) edit->insert(accepted);  // raises textEdited, and so Change
  return true;
}

QString EditorWindow::Filtered(const Control& control, const QString& text, bool* changed) const {
  QString accepted;
  bool turned = false;
  for (char32_t c : text.toUcs4()) {
    const char32_t result = form_.Field_KeyPress(control.row, control.field, c);
    turned = turned || result != c;
    if (result == 8) continue;  // Backspace edits; it inserts nothing
    if (result != 0) accepted += QString::fromUcs4(&result, 1);
  }
  if (changed) *changed = turned;
  return accepted;
}

void EditorWindow::closeEvent(QCloseEvent* event) {
  bool close = true;
  Run([this, &close] { close = form_.Form_QueryUnload(); });
  if (close) event->accept();
  else event->ignore();
}

void EditorWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!frameBase_) return;
  PlaceRowArea();
  const double inner = Twips(event->size().height());
  Run([this, inner] { form_.Form_Resize(inner); });
}

}  // namespace parvenna::ui
