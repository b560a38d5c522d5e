#include "ui/about_dialog.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/splash_screen.h"

namespace parvenna::ui {

namespace {

constexpr const char* kTitle = "About Parvenna";
constexpr const char* kProgramName = "Parvenna";
constexpr const char* kPurpose = "Closure checker for land surveyors and plan examiners";
constexpr const char* kCreditsLabel = "Credits:";
constexpr const char* kOK = "&OK";

QPixmap Emblem(int size) {
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  PaintEmblem(painter, QRectF(4, 4, size - 8, size - 8));
  return picture;
}

}  // namespace

AboutDialog::AboutDialog(const std::string& versionLine, const std::string& credits, QWidget* parent)
    : QDialog(parent) {
  setWindowTitle(kTitle);

  auto* emblem = new QLabel(this);
  emblem->setPixmap(Emblem(72));
  emblem->setAlignment(Qt::AlignTop);
  auto* name = new QLabel(kProgramName, this);
  QFont big = name->font();
  big.setPointSize(big.pointSize() + 8);
  big.setBold(true);
  name->setFont(big);
  auto* purpose = new QLabel(kPurpose, this);
  version_ = new QLabel(QString::fromStdString(versionLine), this);

  credits_ = new QPlainTextEdit(this);
  credits_->setReadOnly(true);
  credits_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // The store starts every contribution with a line break; the box does not.
  credits_->setPlainText(QString::fromStdString(credits).trimmed());
  credits_->setMinimumSize(380, 160);

  ok_ = new QPushButton(kOK, this);
  ok_->setDefault(true);
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);

  auto* heading = new QVBoxLayout;
  heading->addWidget(name);
  heading->addWidget(purpose);
  heading->addWidget(version_);
  heading->addStretch(1);
  auto* top = new QHBoxLayout;
  top->addWidget(emblem);
  top->addSpacing(8);
  top->addLayout(heading, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(ok_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addSpacing(6);
  layout->addWidget(new QLabel(kCreditsLabel, this));
  layout->addWidget(credits_, 1);
  layout->addLayout(buttons);
}

}  // namespace parvenna::ui
