#include "ui/course_row_view.h"

#include <QMouseEvent>
#include <QSignalBlocker>

#include "ui/control_colours.h"
#include "ui/course_field_edit.h"
#include "ui/twips.h"

namespace parvenna::ui {
namespace {

// The row's own layout, in twips: the row button to the left, then the face.
// Field places on the curve face come from the form; the rest is fixed here.
constexpr double kRowButtonLeft = 60;
constexpr double kRowButtonWidth = 420;
constexpr double kRowButtonHeight = 240;
constexpr double kFrameLeft = 540;
constexpr double kFrameWidth = 5520;
constexpr double kFieldWidth = 1440;
constexpr double kFieldHeight = 300;
constexpr double kLabelWidth = 240;
constexpr double kLineTop = 50;          // fields of the line face, centred in 400
// The line face: the direction's caption, wide enough for "Azimuth", then
// the two fields and the invert button.
constexpr double kDirectionLabelWidth = 840;
constexpr double kLineBearingLeft = 900;
constexpr double kLineDistanceLeft = 2700;
constexpr double kLineInvertLeft = 4260;
constexpr double kSecondLineTop = 460;   // the second line of the curve face
constexpr double kSlotPitch = 1800;      // one label and field
constexpr double kInvertLeft = 3960;
constexpr double kInvertWidth = 900;
constexpr double kSignWidth = 560;
constexpr double kPlusLeft = 2160;
constexpr double kMinusLeft = 2760;
// Curve rows stand out from line rows by a light tint.
constexpr Rgb kCurveFace{232, 240, 250};

QLabel* MakeLabel(const QString& caption, QWidget* parent) {
  auto* label = new QLabel(caption, parent);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->resize(Px(kLabelWidth), Px(kFieldHeight));
  return label;
}

CourseFieldEdit* MakeField(QWidget* parent, double left, double top) {
  auto* edit = new CourseFieldEdit(parent);
  edit->setGeometry(Px(left), Px(top), Px(kFieldWidth), Px(kFieldHeight));
  edit->setContextMenuPolicy(Qt::DefaultContextMenu);
  return edit;
}

QPushButton* MakeButton(QWidget* parent, double left, double top, double width, double height) {
  auto* button = new QPushButton(parent);
  button->setGeometry(Px(left), Px(top), Px(width), Px(height));
  return button;
}

// The left and top of a field in place 1 to 4 of the curve face.
QPoint SlotOf(int place) {
  if (place >= 1 && place <= 3) return {Px((place - 1) * kSlotPitch + 360), Px(120)};
  return {Px(360), Px(kSecondLineTop)};
}

Qt::CheckState CheckStateOf(int value) {
  switch (value) {
    case SignTicked: return Qt::Checked;
    case SignGrey: return Qt::PartiallyChecked;
    default: return Qt::Unchecked;
  }
}

}  // namespace

void SignCheckBox::nextCheckState() {
  if (onToggle) onToggle(byMouse_);
}

void SignCheckBox::mouseReleaseEvent(QMouseEvent* event) {
  byMouse_ = true;
  QCheckBox::mouseReleaseEvent(event);
  byMouse_ = false;
}

double CourseRowView::AreaWidth() { return kFrameLeft + kFrameWidth; }

CourseRowView::CourseRowView(QWidget* rowArea, int rowIndex) : row(rowIndex) {
  cmdNo = MakeButton(rowArea, kRowButtonLeft, 0, kRowButtonWidth, kRowButtonHeight);
  cmdNo->setAutoDefault(false);

  frameLine = new QWidget(rowArea);
  frameLine->setGeometry(Px(kFrameLeft), 0, Px(kFrameWidth), Px(400));
  lblB_ = MakeLabel("", frameLine);
  lblB_->setGeometry(0, Px(kLineTop), Px(kDirectionLabelWidth), Px(kFieldHeight));
  txtBearingLine = MakeField(frameLine, kLineBearingLeft, kLineTop);
  lblD_ = MakeLabel("D", frameLine);
  lblD_->move(Px(kLineDistanceLeft - kLabelWidth), Px(kLineTop));
  txtDistanceLine = MakeField(frameLine, kLineDistanceLeft, kLineTop);
  cmdLineInvert = MakeButton(frameLine, kLineInvertLeft, kLineTop, kInvertWidth, kFieldHeight);

  frameArc = new QWidget(rowArea);
  frameArc->setGeometry(Px(kFrameLeft), 0, Px(kFrameWidth), Px(800));
  SetControlColours(frameArc, Surface::Face, kCurveFace);
  lblArcB_ = MakeLabel("B", frameArc);
  txtBearingArc = MakeField(frameArc, 0, 0);
  lblA_ = MakeLabel("A", frameArc);
  txtArc = MakeField(frameArc, 0, 0);
  lblR_ = MakeLabel("R", frameArc);
  txtRadius = MakeField(frameArc, 0, 0);
  lblC_ = MakeLabel("C", frameArc);
  txtChord = MakeField(frameArc, 0, 0);
  chkPlus = new SignCheckBox(frameArc);
  chkPlus->setTristate(true);
  chkPlus->setGeometry(Px(kPlusLeft), Px(kSecondLineTop), Px(kSignWidth), Px(kFieldHeight));
  chkMinus = new SignCheckBox(frameArc);
  chkMinus->setTristate(true);
  chkMinus->setGeometry(Px(kMinusLeft), Px(kSecondLineTop), Px(kSignWidth), Px(kFieldHeight));
  cmdArcInvert = MakeButton(frameArc, kInvertLeft, kSecondLineTop, kInvertWidth, kFieldHeight);
  for (QPushButton* b : {cmdLineInvert, cmdArcInvert}) b->setAutoDefault(false);

  // The names of the control arrays, with the element's index.
  const auto name = [](QObject* control, const char* array, int index) {
    control->setObjectName(QString("%1(%2)").arg(array).arg(index));
  };
  name(cmdNo, "cmdNo", row);
  name(frameLine, "frameLine", row);
  name(frameArc, "frameArc", row);
  name(lblB_, "lblB", row);
  name(lblD_, "lblD", row);
  name(lblArcB_, "lblArcB", row);
  name(lblA_, "lblA", row);
  name(lblR_, "lblR", row);
  name(lblC_, "lblC", row);
  name(txtBearingLine, "txtBearingLine", row);
  name(txtDistanceLine, "txtDistanceLine", row);
  name(txtBearingArc, "txtBearingArc", row);
  name(txtArc, "txtArc", row);
  name(txtRadius, "txtRadius", row);
  name(txtChord, "txtChord", row);
  name(cmdLineInvert, "cmdLineInvert", row);
  name(cmdArcInvert, "cmdArcInvert", row);
  name(chkPlus, "chksign", 2 * row);
  name(chkMinus, "chksign", 2 * row + 1);
}

CourseFieldEdit* CourseRowView::Field(CourseField field) const {
  switch (field) {
    case CourseField::BearingLine: return txtBearingLine;
    case CourseField::DistanceLine: return txtDistanceLine;
    case CourseField::BearingArc: return txtBearingArc;
    case CourseField::Arc: return txtArc;
    case CourseField::Radius: return txtRadius;
    case CourseField::Chord: return txtChord;
  }
  return txtBearingLine;
}

void CourseRowView::PlaceLabel(QLabel* label, int left, int top) {
  if (label->pos() != QPoint(left, top)) label->move(left, top);
}

void CourseRowView::Mirror(const editor::EditorForm& form) {
  const auto i = static_cast<std::size_t>(row);
  MirrorFrame(frameLine, form.frameLine[i], lineShown_);
  MirrorFrame(frameArc, form.frameArc[i], arcShown_);
  MirrorButton(cmdNo, form.cmdNo[i], Px(form.cmdNo[i].Top), cmdNoShown_);

  // Only the face that shows needs its fields brought up to date now; the
  // hidden one catches up when it is turned.
  if (form.frameLine[i].Visible) {
    const QString direction = QString::fromStdString(form.lblBearing.Caption);
    if (lblB_->text() != direction) lblB_->setText(direction);
    MirrorText(txtBearingLine, form.txtBearingLine[i], Px(kLineBearingLeft), Px(kLineTop),
               fieldShown_[0]);
    MirrorText(txtDistanceLine, form.txtDistanceLine[i], Px(kLineDistanceLeft), Px(kLineTop),
               fieldShown_[1]);
    MirrorButton(cmdLineInvert, form.cmdLineInvert[i], Px(kLineTop), lineInvertShown_);
    return;
  }
  const QPoint bearing = SlotOf(form.ArcFieldPosition("txtBearing"));
  MirrorText(txtBearingArc, form.txtBearingArc[i], bearing.x(), bearing.y(), fieldShown_[2]);
  PlaceLabel(lblArcB_, bearing.x() - Px(kLabelWidth), bearing.y());
  lblArcB_->setText(form.project.BearingMode ? "B" : "Az");
  struct Curve {
    QLineEdit* edit;
    const TextBox& box;
    QLabel* label;
    const Label& model;
    std::size_t shown;
  };
  for (const Curve& c : {Curve{txtArc, form.txtArc[i], lblA_, form.lblA[i], 3},
                         Curve{txtRadius, form.txtRadius[i], lblR_, form.lblR[i], 4},
                         Curve{txtChord, form.txtChord[i], lblC_, form.lblC[i], 5}}) {
    MirrorText(c.edit, c.box, Px(c.box.Left), Px(c.box.Top), fieldShown_[c.shown]);
    PlaceLabel(c.label, Px(c.model.Left), Px(c.model.Top));
  }
  MirrorSign(chkPlus, form.chksign[2 * i], plusShown_);
  MirrorSign(chkMinus, form.chksign[2 * i + 1], minusShown_);
  MirrorButton(cmdArcInvert, form.cmdArcInvert[i], Px(kSecondLineTop), arcInvertShown_);
}

void CourseRowView::MirrorText(QLineEdit* edit, const TextBox& box, int left, int top,
                               std::optional<TextState>& shown) {
  const TextState now{box.Text, box.ToolTipText, box.BackColor, box.Enabled, box.Visible, left, top};
  if (shown && *shown == now) return;
  const QSignalBlocker block(edit);
  if (!shown || shown->text != now.text) {
    const QString text = QString::fromStdString(now.text);
    if (edit->text() != text) edit->setText(text);
  }
  if (!shown || shown->back != now.back) SetControlColours(edit, Surface::Field, now.back);
  if (!shown || shown->enabled != now.enabled) edit->setEnabled(now.enabled);
  if (!shown || shown->visible != now.visible) edit->setVisible(now.visible);
  if (!shown || shown->left != left || shown->top != top) edit->move(left, top);
  if (!shown || shown->tip != now.tip) edit->setToolTip(QString::fromStdString(now.tip));
  shown = now;
}

void CourseRowView::MirrorButton(QPushButton* button, const CommandButton& model, int top,
                                 std::optional<ButtonState>& shown) {
  const ButtonState now{model.Caption, model.ToolTipText, model.BackColor, model.Enabled,
                        model.Visible, top};
  if (shown && *shown == now) return;
  const QSignalBlocker block(button);
  if (!shown || shown->caption != now.caption) button->setText(QString::fromStdString(now.caption));
  if (!shown || shown->tip != now.tip) button->setToolTip(QString::fromStdString(now.tip));
  if (!shown || shown->back != now.back) SetControlColours(button, Surface::Button, now.back);
  if (!shown || shown->enabled != now.enabled) button->setEnabled(now.enabled);
  if (!shown || shown->visible != now.visible) button->setVisible(now.visible);
  if (!shown || shown->top != top) button->move(button->x(), top);
  shown = now;
}

void CourseRowView::MirrorSign(SignCheckBox* box, const CheckBox& model,
                               std::optional<SignState>& shown) {
  const SignState now{model.Value, model.Enabled, model.Visible, model.Caption, model.ToolTipText};
  if (shown && *shown == now) return;
  const QSignalBlocker block(box);
  box->setCheckState(CheckStateOf(now.value));
  box->setEnabled(now.enabled);
  box->setVisible(now.visible);
  box->setText(QString::fromStdString(now.caption));
  box->setToolTip(QString::fromStdString(now.tip));
  shown = now;
}

void CourseRowView::MirrorFrame(QWidget* frame, const Frame& model,
                                std::optional<FrameState>& shown) {
  // The bottom edge is rounded on its own, so that rows meet without gaps.
  const int top = Px(model.Top);
  const FrameState now{model.Enabled, model.Visible, top, Px(model.Top + model.Height) - top};
  if (shown && *shown == now) return;
  if (!shown || shown->top != now.top || shown->height != now.height) {
    frame->setGeometry(frame->x(), now.top, frame->width(), now.height);
  }
  if (!shown || shown->enabled != now.enabled) frame->setEnabled(now.enabled);
  if (!shown || shown->visible != now.visible) frame->setVisible(now.visible);
  shown = now;
}

}  // namespace parvenna::ui
