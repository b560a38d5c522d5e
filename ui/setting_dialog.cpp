#include "ui/setting_dialog.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "store/messages.h"
#include "ui/control_colours.h"
#include "ui/twips.h"

namespace parvenna::ui {

namespace msg = store::messages;

namespace {

constexpr int kBackspace = 8;
constexpr const char* kMinuteMark = "'";
constexpr const char* kSecondMark = "\"";

void SetBackground(QLabel* label, Rgb colour) {
  if (label->palette().color(QPalette::Window) == ToQColor(colour)) return;
  SetControlColours(label, Surface::Face, colour);
}

}  // namespace

SettingDialog::SettingDialog(store::SettingForm& form, Prompter& prompter, QWidget* parent)
    : FormDialog(prompter, parent), form_(form) {}

QLineEdit* SettingDialog::Edit(TextBox& box, int characters) {
  auto* edit = new QLineEdit(this);
  edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QString(characters, '0')) + 16);
  edit->installEventFilter(this);
  boxes_[edit] = &box;
  connect(edit, &QLineEdit::textEdited, this, [this, &box](const QString& text) {
    Run([this, &box, t = S(text)] { form_.SetText(box, t); });
  });
  return edit;
}

QCheckBox* SettingDialog::Check(CheckBox& box) {
  auto* check = new QCheckBox(this);
  checks_[check] = &box;
  connect(check, &QCheckBox::clicked, this, [this, &box](bool on) {
    Run([this, &box, on] { form_.SetCheck(box, on ? 1 : 0); });
  });
  return check;
}

template <std::size_t N>
QButtonGroup* SettingDialog::Options(QGroupBox* frame, QBoxLayout* into,
                                     std::array<OptionButton, N>& models,
                                     void (store::SettingForm::*click)(int)) {
  auto* group = new QButtonGroup(this);
  for (std::size_t i = 0; i < N; ++i) {
    auto* option = new QRadioButton(Q(models[i].Caption), frame);
    group->addButton(option, static_cast<int>(i));
    into->addWidget(option);
  }
  connect(group, &QButtonGroup::idClicked, this,
          [this, click](int id) { Run([this, click, id] { (form_.*click)(id); }); });
  return group;
}

QPushButton* SettingDialog::Command(void (store::SettingForm::*click)()) {
  auto* button = new QPushButton(this);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, click] { Run([this, click] { (form_.*click)(); }); });
  return button;
}

void SettingDialog::bind() {
  if (cmdOK_) return;
  setWindowTitle(Q(form_.Caption));
  // The form is topmost whenever it is active, and it is shown only to be used.
  setWindowFlag(Qt::WindowStaysOnTopHint);

  auto* left = new QVBoxLayout;
  left->addWidget(BuildOrder());
  left->addWidget(BuildSwitches());
  left->addWidget(BuildTangential());
  left->addStretch(1);
  auto* right = new QVBoxLayout;
  right->addWidget(BuildUnits());
  right->addWidget(BuildColours());
  right->addStretch(1);
  auto* columns = new QHBoxLayout;
  columns->addLayout(left);
  columns->addSpacing(6);
  columns->addLayout(right);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns);
  layout->addSpacing(6);
  layout->addLayout(BuildButtons());
  layout->setSizeConstraint(QLayout::SetFixedSize);
  Refresh();
}

QWidget* SettingDialog::BuildOrder() {
  auto* frame = new QGroupBox(msg::FrameOrder, this);
  auto* row = new QHBoxLayout;
  cmdForward_ = new QToolButton(frame);
  cmdForward_->setArrowType(Qt::LeftArrow);
  cmdBackward_ = new QToolButton(frame);
  cmdBackward_->setArrowType(Qt::RightArrow);
  connect(cmdForward_, &QToolButton::clicked, this, [this] { Run([this] { form_.cmdForward_Click(); }); });
  connect(cmdBackward_, &QToolButton::clicked, this,
          [this] { Run([this] { form_.cmdBackward_Click(); }); });
  row->addWidget(cmdForward_);
  for (QLabel*& label : lblOrder_) {
    label = new QLabel(frame);
    label->setAlignment(Qt::AlignCenter);
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    label->setAutoFillBackground(true);
    label->setMinimumWidth(64);
    label->setMinimumHeight(24);
    label->setCursor(Qt::PointingHandCursor);
    label->installEventFilter(this);
    row->addWidget(label);
  }
  row->addWidget(cmdBackward_);
  auto* instructions = new QLabel(msg::Instructions, frame);
  instructions->setWordWrap(true);
  auto* layout = new QVBoxLayout(frame);
  layout->addLayout(row);
  layout->addWidget(instructions);
  return frame;
}

QWidget* SettingDialog::BuildSwitches() {
  auto* panel = new QWidget(this);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(4, 4, 4, 4);
  txtTolerance_ = Edit(form_.txtTolerance, 8);
  chkMini_ = Check(form_.chkMini);
  txtErrDecimal_ = Edit(form_.txtErrDecimal, 3);
  chkCurveOpt_ = Check(form_.chkCurveOpt);
  chkAutoInvert_ = Check(form_.chkAutoInvert);
  chkTangent_ = Check(form_.chkTangent);
  chkToolTip_ = Check(form_.chkToolTip);
  chkToolTip_->installEventFilter(this);
  txtDegreeSymbol_ = Edit(form_.txtDegreeSymbol, 4);
  const std::pair<const char*, QWidget*> rows[] = {
      {msg::LabelTolerance, txtTolerance_},   {msg::LabelMinimize, chkMini_},
      {msg::LabelDecimals, txtErrDecimal_},   {msg::LabelForceArc, chkCurveOpt_},
      {msg::LabelAutoInvert, chkAutoInvert_}, {msg::LabelTangentCheck, chkTangent_},
      {msg::LabelToolTip, chkToolTip_},       {msg::LabelDegreeSymbol, txtDegreeSymbol_}};
  int row = 0;
  for (const auto& [caption, control] : rows) {
    grid->addWidget(new QLabel(caption, panel), row, 0);
    grid->addWidget(control, row, 1, Qt::AlignLeft);
    ++row;
  }
  grid->setColumnStretch(1, 1);
  return panel;
}

// One line of the tangent frame: a lead word, degrees, minutes and seconds,
// and what the figure means.
void SettingDialog::AddArcRow(QGridLayout* grid, int row, std::array<QLineEdit*, 3>& boxes,
                              std::array<QLabel*, 5>& labels, const char* lead, const char* tail) {
  const char* captions[5] = {lead, "", kMinuteMark, kSecondMark, tail};
  for (std::size_t i = 0; i < labels.size(); ++i) labels[i] = new QLabel(captions[i], frameTangential_);
  grid->addWidget(labels[0], row, 0);
  for (std::size_t i = 0; i < 3; ++i) {
    grid->addWidget(boxes[i], row, 1 + 2 * static_cast<int>(i));
    grid->addWidget(labels[i + 1], row, 2 + 2 * static_cast<int>(i));
  }
  grid->addWidget(labels[4], row, 7);
}

QWidget* SettingDialog::BuildTangential() {
  frameTangential_ = new QGroupBox(this);
  for (std::size_t i = 0; i < 3; ++i) {
    txtTangentTolerance_[i] = Edit(form_.txtTangentTolerance[i], 3);
    txtWarning_[i] = Edit(form_.txtWarning[i], 3);
  }
  auto* grid = new QGridLayout(frameTangential_);
  grid->setHorizontalSpacing(3);
  AddArcRow(grid, 0, txtTangentTolerance_, lblTangentTolerance_, msg::LabelUnder,
            msg::LabelAcceptable);
  AddArcRow(grid, 1, txtWarning_, lblWarning_, "", msg::LabelNotChecked);
  grid->setColumnMinimumWidth(8, 0);
  grid->setColumnStretch(8, 1);
  return frameTangential_;
}

QWidget* SettingDialog::BuildUnits() {
  auto* panel = new QWidget(this);
  auto* layout = new QVBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);

  auto* units = new QGroupBox(msg::FrameUnits, panel);
  auto* unitRow = new QHBoxLayout;
  optFeet_ = Options(units, unitRow, form_.optFeet, &store::SettingForm::optFeet_Click);
  unitRow->addStretch(1);
  auto* areas = new QHBoxLayout;
  for (std::size_t i = 0; i < 2; ++i) {
    frameSub_[i] = new QGroupBox(units);
    areas->addWidget(frameSub_[i]);
  }
  auto* acres = new QVBoxLayout(frameSub_[0]);
  optSquareAcres_ =
      Options(frameSub_[0], acres, form_.optSquareAcres, &store::SettingForm::optSquareAcres_Click);
  auto* hectares = new QVBoxLayout(frameSub_[1]);
  optSquareMeters_ = Options(frameSub_[1], hectares, form_.optSquareMeters,
                             &store::SettingForm::optSquareMeters_Click);
  auto* unitLayout = new QVBoxLayout(units);
  unitLayout->addLayout(unitRow);
  unitLayout->addLayout(areas);
  layout->addWidget(units);

  auto* bearing = new QGroupBox(msg::FrameBearing, panel);
  auto* bearingRow = new QHBoxLayout(bearing);
  optBearing_ = Options(bearing, bearingRow, form_.optBearing, &store::SettingForm::optBearing_Click);
  bearingRow->addStretch(1);
  layout->addWidget(bearing);
  return panel;
}

QWidget* SettingDialog::BuildColours() {
  auto* panel = new QWidget(this);
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  auto* back = new QGroupBox(msg::FrameBackColour, panel);
  auto* backColumn = new QVBoxLayout(back);
  optBackColor_ =
      Options(back, backColumn, form_.optBackColor, &store::SettingForm::optBackColor_Click);
  backColumn->addStretch(1);
  auto* fore = new QGroupBox(msg::FrameForeColour, panel);
  auto* foreColumn = new QVBoxLayout(fore);
  optForeColor_ =
      Options(fore, foreColumn, form_.optForeColor, &store::SettingForm::optForeColor_Click);
  row->addWidget(back);
  row->addWidget(fore);
  return panel;
}

QLayout* SettingDialog::BuildButtons() {
  cmdAsDefault_ = Command(&store::SettingForm::cmdAsDefault_Click);
  cmdDefault_ = Command(&store::SettingForm::cmdDefault_Click);
  cmdOK_ = Command(&store::SettingForm::cmdOK_Click);
  cmdCancel_ = Command(&store::SettingForm::cmdCancel_Click);
  cmdApply_ = Command(&store::SettingForm::cmdApply_Click);
  cmdOK_->setDefault(true);
  auto* row = new QHBoxLayout;
  row->addWidget(cmdAsDefault_);
  row->addWidget(cmdDefault_);
  row->addStretch(1);
  row->addWidget(cmdOK_);
  row->addWidget(cmdCancel_);
  row->addWidget(cmdApply_);
  return row;
}

void SettingDialog::ShowForm() {
  bind();
  Present(form_.Centred, [this] { form_.Form_Activate(); });
}

void SettingDialog::Refresh() {
  if (!cmdOK_) return;
  if (!form_.Loaded) {
    hide();
    return;
  }
  for (std::size_t i = 0; i < lblOrder_.size(); ++i) {
    Mirror(lblOrder_[i], form_.lblOrder[i]);
    SetBackground(lblOrder_[i], form_.lblOrder[i].BackColor);
  }
  for (auto& [edit, box] : boxes_) Mirror(const_cast<QLineEdit*>(edit), *box);
  for (auto& [check, box] : checks_) Mirror(const_cast<QCheckBox*>(check), *box);
  for (std::size_t i = 0; i < lblWarning_.size(); ++i) {
    Mirror(lblWarning_[i], form_.lblWarning[i]);
    Mirror(lblTangentTolerance_[i], form_.lblTangentTolerance[i]);
  }
  Mirror(frameTangential_, form_.frameTangential);
  for (std::size_t i = 0; i < frameSub_.size(); ++i) Mirror(frameSub_[i], form_.frameSub[i]);
  MirrorGroup(optFeet_, form_.optFeet.data(), 2);
  MirrorGroup(optSquareAcres_, form_.optSquareAcres.data(), 2);
  MirrorGroup(optSquareMeters_, form_.optSquareMeters.data(), 2);
  MirrorGroup(optBearing_, form_.optBearing.data(), 2);
  MirrorGroup(optBackColor_, form_.optBackColor.data(), 4);
  MirrorGroup(optForeColor_, form_.optForeColor.data(), 5);
  for (auto [button, model] : {std::pair{cmdOK_, &form_.cmdOK}, {cmdApply_, &form_.cmdApply},
                               {cmdDefault_, &form_.cmdDefault}, {cmdAsDefault_, &form_.cmdAsDefault},
                               {cmdCancel_, &form_.cmdCancel}}) {
    Mirror(button, *model);
  }
  for (auto [arrow, model] : {std::pair{cmdForward_, &form_.cmdForward}, {cmdBackward_, &form_.cmdBackward}}) {
    arrow->setEnabled(model->Enabled);
    arrow->setToolTip(Q(model->ToolTipText));
  }
}

bool SettingDialog::FilterKey(QLineEdit* edit, QKeyEvent* key) {
  // Return and Escape belong to the dialog's OK and Cancel.
  if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Escape) {
    return false;
  }
  int code = key->key() == Qt::Key_Backspace ? kBackspace
             : key->text().isEmpty()          ? 0
                                              : static_cast<int>(key->text().at(0).unicode());
  if (code == 0) return false;  // a key that types nothing: arrows, Delete, Home
  int passed = code;
  TextBox& box = *boxes_.at(edit);
  Run([this, &box, code, &passed] { passed = form_.KeyPress(box, code); });
  return passed == 0;
}

bool SettingDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* edit = qobject_cast<QLineEdit*>(watched);
    if (edit && boxes_.count(edit)) return FilterKey(edit, static_cast<QKeyEvent*>(event));
  }
  if (event->type() == QEvent::MouseButtonPress) {
    for (std::size_t i = 0; i < lblOrder_.size(); ++i) {
      if (watched == lblOrder_[i]) {
        Run([this, i] { form_.lblOrder_Click(static_cast<int>(i)); });
        return true;
      }
    }
  }
  // The release that ticks the box comes first; the form hears of the
  // release once the tick is its.
  if (event->type() == QEvent::MouseButtonRelease && watched == chkToolTip_) {
    QMetaObject::invokeMethod(
        this, [this] { Run([this] { form_.chkToolTip_MouseUp(); }); }, Qt::QueuedConnection);
  }
  return FormDialog::eventFilter(watched, event);
}

bool SettingDialog::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && form_.Loaded && !Running()) {
    Run([this] { form_.Form_Activate(); });
  }
  return FormDialog::event(event);
}

// Escape is the Cancel button: nothing written.
void SettingDialog::reject() {
  if (form_.Loaded) Run([this] { form_.cmdCancel_Click(); });
}

void SettingDialog::closeEvent(QCloseEvent* event) {
  if (form_.Loaded) Run([this] { form_.Form_Unload(); });
  event->accept();
}

}  // namespace parvenna::ui
