// The editor window: building the controls, binding them to the form, and
// mirroring the form's state.
#include "ui/editor_window.h"

#include <algorithm>

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "store/project_file.h"
#include "ui/control_colours.h"
#include "ui/twips.h"

namespace parvenna::ui {

using editor::FocusKind;

namespace {

constexpr int kScrollBarWidth = 17;

QString Q(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

EditorWindow::EditorWindow(editor::EditorForm& form, PainterCanvas& canvas, QWidget* parent)
    : QWidget(parent), form_(form), canvas_(canvas) {}

EditorWindow::~EditorWindow() = default;

void EditorWindow::bind() {
  if (sketch_) return;
  setObjectName("frmEditor");
  setWindowTitle("Parcel editor");
  // The picture's normal place is beside the panel; the rows lie under both.
  topBand_ = Px(form_.picParcel.Top + form_.picParcel.Height);
  setFixedWidth(Px(form_.Width));
  setMinimumHeight(Px(form_.Height));
  BuildPanel();
  BuildRows();
  sketch_ = new SketchView(canvas_, this);
  sketch_->setObjectName("picParcel");
  sketch_->onDoubleClick = [this] { Run([this] { form_.ToggleSketchZoom(); }); };
  BuildRowMenu();
  resize(Px(form_.Width), std::max(Px(form_.Height), topBand_ + Px(12 * 400)));
  // The form learns its size now: a zoom before the window shows fills it.
  Run([this] { form_.Form_Resize(Twips(height())); });
}

QPushButton* EditorWindow::CommandButton(const char* name, const parvenna::CommandButton& model,
                                         std::function<void()> click) {
  auto* button = new QPushButton(Q(model.Caption));
  button->setObjectName(name);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, click] { Run(click); });
  commands_.emplace_back(button, &model);
  Register(button, {FocusKind::Other});
  return button;
}

void EditorWindow::BuildPanel() {
  editor::EditorForm& f = form_;
  panel_ = new QWidget(this);
  panel_->setGeometry(0, 0, Px(SketchNormalLeft), topBand_);
  auto* column = new QVBoxLayout(panel_);
  column->setContentsMargins(6, 6, 6, 6);
  column->setSpacing(5);

  // The parcel list with the steps through it, and the name.
  auto* list = new QHBoxLayout;
  cbxParcel_ = new QComboBox;
  cbxParcel_->setObjectName("cbxParcel");
  connect(cbxParcel_, &QComboBox::activated, this,
          [this](int index) { Run([this, index] { form_.SetListIndex(index); }); });
  Register(cbxParcel_, {FocusKind::ParcelList});
  cmdPrevious_ =
      CommandButton("cmdPrevious", f.cmdPrevious, [this] { form_.cmdPrevious_Click(); });
  cmdNext_ = CommandButton("cmdNext", f.cmdNext, [this] { form_.cmdNext_Click(); });
  for (QPushButton* b : {cmdPrevious_, cmdNext_}) b->setFixedWidth(26);
  list->addWidget(new QLabel("Parcel"));
  list->addWidget(cbxParcel_, 1);
  list->addWidget(cmdPrevious_);
  list->addWidget(cmdNext_);
  column->addLayout(list);

  auto* name = new QHBoxLayout;
  txtParcel_ = new QLineEdit;
  txtParcel_->setObjectName("txtParcel");
  txtParcel_->setMaxLength(store::kParcelNameLimit);
  connect(txtParcel_, &QLineEdit::textEdited, this, [this](const QString& text) {
    Run([this, text] { form_.txtParcel.Text = text.toStdString(); });
  });
  Register(txtParcel_, {FocusKind::Parcel});
  name->addWidget(new QLabel("Name  "));
  name->addWidget(txtParcel_, 1);
  column->addLayout(name);

  // The results of the last computation.
  auto* results = new QGroupBox("Closure");
  frame3_ = results;
  results->setObjectName("Frame3");
  auto* grid = new QFormLayout(results);
  grid->setContentsMargins(8, 4, 8, 4);
  grid->setVerticalSpacing(2);
  const char* captions[] = {"Misclosure", "Bearing", "Precision", "Area"};
  const char* names[] = {"lblClosure", "lblDirection", "lblPrecision", "lblArea"};
  for (std::size_t i = 0; i < results_.size(); ++i) {
    auto* value = new QLabel;
    value->setObjectName(names[i]);
    value->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setMinimumHeight(18);
    results_[i] = value;
    grid->addRow(captions[i], value);
  }
  column->addWidget(results);

  // The commands on the parcel.
  auto* commands = new QGroupBox("Parcel");
  frame1_ = commands;
  commands->setObjectName("Frame1");
  auto* buttons = new QGridLayout(commands);
  buttons->setContentsMargins(6, 4, 6, 6);
  buttons->setSpacing(4);
  cmdInsert_ = CommandButton("cmdInsert", f.cmdInsert, [this] { form_.cmdInsert_Click(); });
  cmdEdit_ = CommandButton("cmdEdit", f.cmdEdit, [this] { form_.cmdEdit_Click(); });
  cmdSave_ = CommandButton("cmdSave", f.cmdSave, [this] { form_.cmdSave_Click(); });
  cmdCancel_ = CommandButton("cmdCancel", f.cmdCancel, [this] { form_.cmdCancel_Click(); });
  cmdDelete_ = CommandButton("cmdDelete", f.cmdDelete, [this] { form_.Delete_Parcel(); });
  cmdAutoInverse_ =
      CommandButton("cmdAutoInverse", f.cmdAutoInverse, [this] { form_.cmdAutoInverse_Click(); });
  cmdZoom_ = CommandButton("cmdZoom", f.cmdZoom, [this] { form_.ToggleSketchZoom(); });
  const std::array<QPushButton*, 6> grid6{cmdInsert_, cmdEdit_, cmdSave_,
                                          cmdCancel_, cmdDelete_, cmdAutoInverse_};
  for (std::size_t i = 0; i < grid6.size(); ++i) {
    buttons->addWidget(grid6[i], static_cast<int>(i / 3), static_cast<int>(i % 3));
  }
  buttons->addWidget(cmdZoom_, 2, 0);
  column->addWidget(commands);

  // The course options: on the form since its first version, with no effect.
  auto* options = new QGroupBox("Course");
  frame4_ = options;
  options->setObjectName("Frame4");
  auto* optionGrid = new QGridLayout(options);
  optionGrid->setContentsMargins(6, 2, 6, 2);
  optionGrid->setVerticalSpacing(0);
  const char* optionCaptions[] = {"Append", "Insert before", "Insert after", "Delete"};
  const char* optionNames[] = {"optAppend", "optInsertBefore", "OptInsertAfter", "optDelete"};
  auto* group = new QButtonGroup(options);
  for (int i = 0; i < 4; ++i) {
    auto* option = new QRadioButton(optionCaptions[i]);
    option->setObjectName(optionNames[i]);
    group->addButton(option);
    optionGrid->addWidget(option, i / 2, i % 2);
    Register(option, {FocusKind::Other});
  }
  group->buttons().front()->setChecked(true);
  column->addWidget(options);
  column->addStretch(1);

  panelTabOrder_ = {cbxParcel_, cmdPrevious_, cmdNext_, txtParcel_, cmdInsert_, cmdEdit_,
                    cmdSave_,   cmdCancel_,   cmdDelete_, cmdAutoInverse_, cmdZoom_};
}

void EditorWindow::BuildRows() {
  frameBase_ = new QWidget(this);
  frameBase_->setObjectName("frameBase");
  frameBase_->installEventFilter(this);
  scroll_ = new QScrollBar(Qt::Vertical, this);
  scroll_->setObjectName("VScroll1");
  // The rows move at the end of a drag, not during it.
  scroll_->setTracking(false);
  scroll_->setFocusPolicy(Qt::StrongFocus);
  connect(scroll_, &QScrollBar::valueChanged, this,
          [this](int value) { Run([this, value] { form_.VScroll1_Change(value); }); });
  Register(scroll_, {FocusKind::ScrollBar});

  rows_.reserve(CourseLimit);
  for (int i = 0; i < CourseLimit; ++i) {
    auto row = std::make_unique<CourseRowView>(frameBase_, i);
    CourseRowView& r = *row;
    Register(r.cmdNo, {FocusKind::RowButton, i});
    for (CourseField field : {CourseField::BearingLine, CourseField::DistanceLine,
                              CourseField::BearingArc, CourseField::Arc, CourseField::Radius,
                              CourseField::Chord}) {
      CourseFieldEdit* edit = r.Field(field);
      Register(edit, {FocusKind::Field, i, field});
      const Control control{FocusKind::Field, i, field};
      edit->filter = [this, control](const QString& text) { return Filtered(control, text); };
      connect(edit, &QLineEdit::textEdited, this, [this, i, field](const QString& text) {
        Run([this, i, field, text] { form_.SetFieldText(i, field, text.toStdString()); });
      });
    }
    connect(r.cmdLineInvert, &QPushButton::clicked, this,
            [this, i] { RunCourse([this, i] { form_.cmdLineInvert_Click(i); }); });
    connect(r.cmdArcInvert, &QPushButton::clicked, this,
            [this, i] { RunCourse([this, i] { form_.cmdArcInvert_Click(i); }); });
    for (QPushButton* b : {r.cmdLineInvert, r.cmdArcInvert}) Register(b, {FocusKind::Other});
    for (int side = 0; side < 2; ++side) {
      SignCheckBox* box = side == 0 ? r.chkPlus : r.chkMinus;
      const int index = 2 * i + side;
      Register(box, {FocusKind::Other});
      box->onToggle = [this, index](bool byMouse) {
        Run([this, index, byMouse] {
          form_.chksign_Toggle(index);
          if (byMouse) form_.chksign_MouseUp(index);
        });
      };
    }
    rows_.push_back(std::move(row));
  }
  PlaceRowArea();
}

void EditorWindow::BuildRowMenu() {
  rowMenu_ = new QMenu(this);
  rowMenu_->setObjectName("mnuPopup");
  auto add = [this](const char* name, const std::string& caption, std::function<void()> handler) {
    QAction* action = rowMenu_->addAction(Q(caption));
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, handler] { RunCourse(handler); });
    return action;
  };
  mnuPopEdit_ = add("mnuPopEdit", form_.menus.mnuPopEdit.Caption, [this] { form_.cmdEdit_Click(); });
  add("mnuPopDelete", "&Delete course", [this] { form_.mnuPopDelete_Click(); });
  add("mnuPopInsertBefore", "Insert course &before", [this] { form_.mnuPopInsertBefore_Click(); });
  add("mnuPopInsertAfter", "Insert course &after", [this] { form_.mnuPopInsertAfter_Click(); });
  mnuPopChangeLineCurve_ = add("mnuPopChangeLineCurve", form_.menus.mnuPopChangeLineCurve.Caption,
                               [this] { form_.mnuPopChangeLineCurve_Click(); });
  add("mnuPopFlipBearing", "&Flip bearing (N<-->S)", [this] { form_.FlipCurrentBearing(); });
}

void EditorWindow::Register(QWidget* widget, Control control) {
  controls_[widget] = control;
  widget->installEventFilter(this);
}

void EditorWindow::PlaceRowArea() {
  const int rowsHeight = std::max(0, height() - topBand_);
  frameBase_->setGeometry(0, topBand_, width() - kScrollBarWidth, rowsHeight);
  scroll_->setGeometry(width() - kScrollBarWidth, topBand_, kScrollBarWidth, rowsHeight);
}

// ---- Mirroring -------------------------------------------------------------------

void EditorWindow::Refresh() {
  if (!sketch_) return;
  // Qt moves the focus off a control that becomes disabled; the form is not
  // told of that move, and finds its focus again when the user acts.
  ++depth_;
  MirrorAll();
  --depth_;
}

void EditorWindow::MirrorAll() {
  for (auto& row : rows_) row->Mirror(form_);
  frameBase_->setEnabled(form_.frameBase.Enabled);
  {
    const QSignalBlocker block(scroll_);
    scroll_->setRange(0, form_.VScroll1.Max);
    scroll_->setSingleStep(form_.VScroll1.SmallChange);
    scroll_->setPageStep(form_.VScroll1.LargeChange);
    scroll_->setValue(form_.VScroll1.Value);
  }
  MirrorTopControls();
  MirrorTabOrder();

  const SketchBox& box = form_.picParcel;
  const QRect rect(Px(box.Left), Px(box.Top), Px(box.Width), Px(box.Height));
  if (rect != shownSketchRect_) {
    shownSketchRect_ = rect;
    sketch_->setGeometry(rect);
    sketch_->raise();
  }
  if (box.ToolTipText != shownSketchTip_) {
    shownSketchTip_ = box.ToolTipText;
    sketch_->setToolTip(Q(box.ToolTipText));
  }
  sketch_->setEnabled(form_.picParcelEnabled);
  sketch_->Mirror(form_.results.lblLineNo);

  mnuPopEdit_->setEnabled(form_.menus.mnuPopEdit.Enabled);
  mnuPopChangeLineCurve_->setText(Q(form_.menus.mnuPopChangeLineCurve.Caption));
  mnuPopChangeLineCurve_->setEnabled(form_.menus.mnuPopChangeLineCurve.Enabled);
}

void EditorWindow::MirrorTopControls() {
  const ResultPanel& r = form_.results;
  const std::array<const Label*, 4> labels{&r.lblClosure, &r.lblDirection, &r.lblPrecision,
                                           &r.lblArea};
  for (std::size_t i = 0; i < labels.size(); ++i) {
    results_[i]->setText(Q(labels[i]->Caption));
    const std::pair<Rgb, Rgb> colours{labels[i]->BackColor, labels[i]->ForeColor};
    if (shownResultColour_[i] != colours) {
      shownResultColour_[i] = colours;
      SetControlColours(results_[i], Surface::Face, colours.first, colours.second);
    }
  }

  const ComboBox& list = form_.cbxParcel;
  {
    const QSignalBlocker block(cbxParcel_);
    if (list.List != shownList_) {
      shownList_ = list.List;
      cbxParcel_->clear();
      for (const std::string& item : list.List) cbxParcel_->addItem(Q(item));
    }
    if (cbxParcel_->currentIndex() != list.ListIndex) cbxParcel_->setCurrentIndex(list.ListIndex);
  }
  cbxParcel_->setEnabled(list.Enabled);
  cbxParcel_->setToolTip(Q(list.ToolTipText));
  if (shownListBack_ != list.BackColor) {
    shownListBack_ = list.BackColor;
    SetControlColours(cbxParcel_, Surface::Button, list.BackColor);
  }

  const TextBox& name = form_.txtParcel;
  {
    const QSignalBlocker block(txtParcel_);
    if (txtParcel_->text() != Q(name.Text)) txtParcel_->setText(Q(name.Text));
  }
  txtParcel_->setEnabled(name.Enabled);
  txtParcel_->setToolTip(Q(name.ToolTipText));
  if (shownParcelBack_ != name.BackColor) {
    shownParcelBack_ = name.BackColor;
    SetControlColours(txtParcel_, Surface::Field, name.BackColor);
  }

  for (auto& [button, model] : commands_) {
    button->setText(Q(model->Caption));
    button->setEnabled(model->Enabled);
    button->setVisible(model->Visible);
    button->setToolTip(Q(model->ToolTipText));
  }
  frame1_->setEnabled(form_.Frame1.Enabled);
  frame3_->setEnabled(form_.Frame3.Enabled);
  frame4_->setEnabled(form_.Frame4.Enabled);
}

void EditorWindow::MirrorTabOrder() {
  // The form numbers the row controls; the panel comes before them.
  std::vector<std::pair<int, QWidget*>> grid;
  grid.reserve(CourseLimit * 12);
  for (int i = 0; i < CourseLimit; ++i) {
    const auto k = static_cast<std::size_t>(i);
    CourseRowView& r = *rows_[k];
    grid.emplace_back(form_.cmdNo[k].TabIndex, r.cmdNo);
    for (CourseField field : {CourseField::BearingLine, CourseField::DistanceLine,
                              CourseField::BearingArc, CourseField::Arc, CourseField::Radius,
                              CourseField::Chord}) {
      grid.emplace_back(form_.Field(i, field).TabIndex, r.Field(field));
    }
    grid.emplace_back(form_.cmdLineInvert[k].TabIndex, r.cmdLineInvert);
    grid.emplace_back(form_.cmdArcInvert[k].TabIndex, r.cmdArcInvert);
    grid.emplace_back(form_.chksign[2 * k].TabIndex, r.chkPlus);
    grid.emplace_back(form_.chksign[2 * k + 1].TabIndex, r.chkMinus);
  }
  std::vector<int> order;
  order.reserve(grid.size());
  for (const auto& entry : grid) order.push_back(entry.first);
  if (order == shownTabOrder_) return;
  shownTabOrder_ = std::move(order);
  std::stable_sort(grid.begin(), grid.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  QWidget* previous = nullptr;
  auto chain = [&previous](QWidget* next) {
    if (previous) QWidget::setTabOrder(previous, next);
    previous = next;
  };
  for (QWidget* w : panelTabOrder_) chain(w);
  for (const auto& entry : grid) chain(entry.second);
  chain(scroll_);
}

}  // namespace parvenna::ui
