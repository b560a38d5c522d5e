#include "ui/create_dialog.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "store/messages.h"

namespace parvenna::ui {

namespace msg = store::messages;

CreateDialog::CreateDialog(store::CreateForm& form, Prompter& prompter, QWidget* parent)
    : FormDialog(prompter, parent), form_(form) {}

QLineEdit* CreateDialog::Edit(const char* name, const std::string& toolTip) {
  auto* edit = new QLineEdit(this);
  edit->setObjectName(name);
  edit->setToolTip(Q(toolTip));
  edit->setMinimumWidth(320);
  edit->installEventFilter(this);
  return edit;
}

QPushButton* CreateDialog::Command(const char* name, void (store::CreateForm::*click)()) {
  auto* button = new QPushButton(this);
  button->setObjectName(name);
  button->installEventFilter(this);
  connect(button, &QPushButton::clicked, this, [this, click] { Run([this, click] { (form_.*click)(); }); });
  return button;
}

void CreateDialog::bind() {
  if (txtProjectName_) return;
  setWindowTitle(Q(form_.Caption));
  // The form makes itself topmost on every activation and is never anything
  // else while it shows.
  setWindowFlag(Qt::WindowStaysOnTopHint);

  txtProjectName_ = Edit("txtProjectName", form_.txtProjectName.ToolTipText);
  txtProjectLocation_ = Edit("txtProjectLocation", form_.txtProjectLocation.ToolTipText);
  txtCADFile_ = Edit("txtCADFile", form_.txtCADFile.ToolTipText);
  connect(txtProjectName_, &QLineEdit::textEdited, this,
          [this](const QString& text) { Run([this, t = S(text)] { form_.SetProjectName(t); }); });
  connect(txtProjectLocation_, &QLineEdit::textEdited, this,
          [this](const QString& text) { Run([this, t = S(text)] { form_.SetProjectLocation(t); }); });
  connect(txtCADFile_, &QLineEdit::textEdited, this,
          [this](const QString& text) { Run([this, t = S(text)] { form_.SetCadFile(t); }); });

  chkAutoName_ = new QCheckBox(this);
  chkAutoName_->setObjectName("chkAutoName");
  chkAutoName_->installEventFilter(this);
  connect(chkAutoName_, &QCheckBox::clicked, this,
          [this](bool on) { Run([this, on] { form_.chkAutoName.Value = on ? 1 : 0; }); });

  cmdBrowseLoc_ = Command("cmdBrowseLoc", &store::CreateForm::cmdBrowseLoc_Click);
  cmdBrowseCAD_ = Command("cmdBrowseCAD", &store::CreateForm::cmdBrowseCAD_Click);
  cmdCreate_ = Command("cmdCreate", &store::CreateForm::cmdCreate_Click);
  cmdCancel_ = Command("cmdCancel", &store::CreateForm::cmdCancel_Click);
  cmdCreate_->setDefault(true);
  cmdCancel_->setAutoDefault(false);

  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(msg::LabelProjectName, this), 0, 0);
  grid->addWidget(txtProjectName_, 0, 1);
  grid->addWidget(new QLabel(msg::LabelProjectLocation, this), 1, 0);
  grid->addWidget(txtProjectLocation_, 1, 1);
  grid->addWidget(cmdBrowseLoc_, 1, 2);
  grid->addWidget(new QLabel(msg::LabelCadFile, this), 2, 0);
  grid->addWidget(txtCADFile_, 2, 1);
  grid->addWidget(cmdBrowseCAD_, 2, 2);
  grid->addWidget(chkAutoName_, 3, 1);
  grid->setColumnStretch(1, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(cmdCreate_);
  buttons->addWidget(cmdCancel_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addSpacing(8);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  setTabOrder(txtProjectName_, txtProjectLocation_);
  setTabOrder(txtProjectLocation_, cmdBrowseLoc_);
  setTabOrder(cmdBrowseLoc_, txtCADFile_);
  setTabOrder(txtCADFile_, cmdBrowseCAD_);
  setTabOrder(cmdBrowseCAD_, chkAutoName_);
  setTabOrder(chkAutoName_, cmdCreate_);
  setTabOrder(cmdCreate_, cmdCancel_);

  dirLocate_ = new DirLocateDialog(form_.frmDirLocate, prompter_, this);
  dirLocate_->bind();
  // Back from the locate dialog the form comes to the front again and takes
  // the directory chosen there.
  dirLocate_->onHidden = [this] {
    activateWindow();
    Run([this] { form_.Form_Activate(); });
  };
  Refresh();
}

void CreateDialog::ShowForm() {
  bind();
  Present(true, [this] { form_.Form_Activate(); });
}

void CreateDialog::Refresh() {
  if (!txtProjectName_) return;
  if (!form_.Loaded) {
    if (dirLocate_->isVisible()) dirLocate_->hide();
    hide();
    return;
  }
  Mirror(txtProjectName_, form_.txtProjectName);
  Mirror(txtProjectLocation_, form_.txtProjectLocation);
  Mirror(txtCADFile_, form_.txtCADFile);
  Mirror(chkAutoName_, form_.chkAutoName);
  Mirror(cmdBrowseLoc_, form_.cmdBrowseLoc);
  Mirror(cmdBrowseCAD_, form_.cmdBrowseCAD);
  Mirror(cmdCreate_, form_.cmdCreate);
  Mirror(cmdCancel_, form_.cmdCancel);
  if (form_.frmDirLocate.Visible && !dirLocate_->isVisible()) dirLocate_->ShowForm();
  dirLocate_->Refresh();
  FollowFocus();
}

void CreateDialog::FollowFocus() {
  if (form_.Focus.empty() || !isVisible()) return;
  auto* target = findChild<QWidget*>(Q(form_.Focus), Qt::FindDirectChildrenOnly);
  if (!target || target->hasFocus()) return;
  target->setFocus(Qt::OtherFocusReason);
  if (auto* edit = qobject_cast<QLineEdit*>(target)) edit->selectAll();
}

bool CreateDialog::event(QEvent* event) {
  // A box of the form's own coming and going inside a handler is not the
  // form coming to the front.
  if (event->type() == QEvent::WindowActivate && form_.Loaded && !Running() &&
      !dirLocate_->isVisible()) {
    Run([this] { form_.Form_Activate(); });
  }
  return FormDialog::event(event);
}

bool CreateDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn && !Running()) {
    form_.Focus = S(watched->objectName());
  }
  return FormDialog::eventFilter(watched, event);
}

// Escape is the Cancel button.
void CreateDialog::reject() {
  if (form_.Loaded) Run([this] { form_.cmdCancel_Click(); });
}

// The close box unloads without creating: the auto-name choice is not kept.
void CreateDialog::closeEvent(QCloseEvent* event) {
  if (form_.Loaded) Run([this] { form_.Form_Unload(); });
  event->accept();
}

}  // namespace parvenna::ui
