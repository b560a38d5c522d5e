#include "ui/dir_locate_dialog.h"

#include <algorithm>

#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

namespace parvenna::ui {

namespace {
constexpr const char* kDriveLabel = "Drive:";
constexpr const char* kDirectoryLabel = "Directory:";
}  // namespace

DirLocateDialog::DirLocateDialog(store::DirLocateForm& form, Prompter& prompter, QWidget* parent)
    : FormDialog(prompter, parent), form_(form) {}

void DirLocateDialog::bind() {
  if (dir1_) return;
  setWindowTitle(Q(form_.Caption));
  setWindowModality(Qt::WindowModal);
  setWindowFlag(Qt::WindowStaysOnTopHint);

  drive1_ = new QComboBox(this);
  for (const QFileInfo& drive : QDir::drives()) {
    drive1_->addItem(QDir::toNativeSeparators(drive.absoluteFilePath()));
  }
  connect(drive1_, &QComboBox::activated, this, [this](int index) {
    std::string drive = S(drive1_->itemText(index));
    Run([this, drive] { form_.Drive1_Change(drive, prompter_); });
  });

  directories_ = new QFileSystemModel(this);
  directories_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
  directories_->setRootPath(QString());
  // The tree fills as the file system answers, a directory at a time: the
  // chosen directory is kept in view until the user moves about the tree.
  auto keepInView = [this] {
    if (revealPending_) QTimer::singleShot(0, this, [this] { Reveal(dir1_->currentIndex()); });
  };
  connect(directories_, &QAbstractItemModel::rowsInserted, this, keepInView);
  connect(directories_, &QAbstractItemModel::layoutChanged, this, keepInView);
  dir1_ = new QTreeView(this);
  dir1_->setModel(directories_);
  for (int column = 1; column < directories_->columnCount(); ++column) dir1_->hideColumn(column);
  dir1_->setHeaderHidden(true);
  dir1_->setMinimumSize(300, 280);
  connect(dir1_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& current) {
            revealPending_ = false;
            if (!current.isValid()) return;
            std::string path = S(QDir::toNativeSeparators(directories_->filePath(current)));
            Run([this, path] { form_.Dir1Path = path; });
          });

  auto userMoved = [this] {
    if (!revealing_) revealPending_ = false;
  };
  connect(dir1_, &QTreeView::expanded, this, userMoved);
  connect(dir1_, &QTreeView::collapsed, this, userMoved);
  connect(dir1_->verticalScrollBar(), &QScrollBar::actionTriggered, this, userMoved);

  path_ = new QLabel(this);
  path_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

  cmdOK_ = new QPushButton(this);
  cmdCancel_ = new QPushButton(this);
  cmdOK_->setDefault(true);
  connect(cmdOK_, &QPushButton::clicked, this, [this] { Run([this] { form_.cmdOK_Click(); }); });
  connect(cmdCancel_, &QPushButton::clicked, this,
          [this] { Run([this] { form_.cmdCancel_Click(); }); });

  auto* driveRow = new QHBoxLayout;
  driveRow->addWidget(new QLabel(kDriveLabel, this));
  driveRow->addWidget(drive1_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(cmdOK_);
  buttons->addWidget(cmdCancel_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(driveRow);
  layout->addWidget(new QLabel(kDirectoryLabel, this));
  layout->addWidget(dir1_, 1);
  layout->addWidget(path_);
  layout->addLayout(buttons);
  Refresh();
}

void DirLocateDialog::ShowForm() {
  bind();
  if (form_.Dir1Path.empty()) form_.Dir1Path = S(QDir::toNativeSeparators(QDir::currentPath()));
  Present(form_.Centred, [this] { form_.Form_Activate(); });
}

void DirLocateDialog::Refresh() {
  if (!dir1_) return;
  Mirror(cmdOK_, form_.cmdOK);
  Mirror(cmdCancel_, form_.cmdCancel);
  int drive = drive1_->findText(Q(form_.Drive1), Qt::MatchFixedString);
  if (drive >= 0) {
    QSignalBlocker block(drive1_);
    drive1_->setCurrentIndex(drive);
  }
  MirrorDirectory();
  if (!form_.Visible && isVisible()) {
    hide();
    if (onHidden) onHidden();
  }
}

void DirLocateDialog::MirrorDirectory() {
  // A long path loses its middle, never its last directory.
  path_->setText(path_->fontMetrics().elidedText(Q(form_.Dir1Path), Qt::ElideMiddle,
                                                 std::max(dir1_->width(), 200)));
  path_->setToolTip(Q(form_.Dir1Path));
  if (form_.Dir1Path.empty()) return;
  QModelIndex index = directories_->index(QDir::fromNativeSeparators(Q(form_.Dir1Path)));
  if (!index.isValid() || dir1_->currentIndex() == index) return;
  QSignalBlocker block(dir1_->selectionModel());
  dir1_->setCurrentIndex(index);
  revealPending_ = true;
  Reveal(index);
}

void DirLocateDialog::Reveal(const QModelIndex& index) {
  if (!index.isValid()) return;
  revealing_ = true;
  for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent()) {
    dir1_->expand(parent);
  }
  dir1_->scrollTo(index, QAbstractItemView::PositionAtCenter);
  revealing_ = false;
}

// The view can scroll only once it has its size.
void DirLocateDialog::showEvent(QShowEvent* event) {
  FormDialog::showEvent(event);
  QTimer::singleShot(0, this, [this] { Reveal(dir1_->currentIndex()); });
}

// Escape and the close box are the Cancel button.
void DirLocateDialog::reject() {
  if (form_.Visible) Run([this] { form_.cmdCancel_Click(); });
}

void DirLocateDialog::closeEvent(QCloseEvent* event) {
  if (!form_.Visible) return event->accept();
  event->ignore();
  reject();
}

}  // namespace parvenna::ui
