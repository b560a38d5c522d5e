#include "ui/report_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/report_printer.h"

namespace parvenna::ui {
namespace {

constexpr double kTwipsPerPixel = 15;

QString Q(const std::string& text) { return QString::fromStdString(text); }

// The filter of the save dialog in Qt's form: "Name (*.x);;Name (*.y)".
QString DialogFilter(const std::string& filter) {
  QStringList parts = Q(filter).split('|', Qt::SkipEmptyParts);
  QStringList out;
  for (int i = 0; i + 1 < parts.size(); i += 2) out << parts[i].section('(', 0, 0) + " (" + parts[i + 1] + ")";
  return out.join(";;");
}

// The preview shows the report without its CR, and counts its positions in
// UTF-16 units; the model counts the characters of the report's own text,
// CR LF and all. The character of the report at a position of the preview.
std::size_t ReportCharacterAt(std::string_view text, qsizetype shown) {
  std::size_t characters = 0;
  qsizetype units = 0;
  for (std::size_t i = 0; i < text.size() && units < shown; ++characters) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (lead != '\r') units += length == 4 ? 2 : 1;  // beyond the first plane: two units
    i += length;
  }
  return characters;
}

}  // namespace

ReportWindow::ReportWindow(store::ProjectState& project, Prompter& prompter,
                           editor::EditorForm* editor, QWidget* editorWindow, QWidget* parent)
    : QWidget(parent, Qt::Window), form_(project, prompter, *this, editor), editorWindow_(editorWindow) {
  setObjectName("frmReport");
  BuildMenu();
  auto* bar = new QWidget(this);
  bar->setObjectName("frameBar");
  auto* barLayout = new QHBoxLayout(bar);
  barLayout->setContentsMargins(4, 4, 4, 4);
  for (int i = 0; i < 3; ++i) {
    optPassFail_[static_cast<std::size_t>(i)] = new QRadioButton(bar);
    optPassFail_[static_cast<std::size_t>(i)]->setObjectName(QString("optPassFail%1").arg(i));
    barLayout->addWidget(optPassFail_[static_cast<std::size_t>(i)]);
  }
  barLayout->addWidget(new QLabel(Q(form_.Label1.Caption), bar));
  cbxParcel_ = new QComboBox(bar);
  cbxParcel_->setObjectName("cbxParcel");
  cbxParcel_->setMinimumContentsLength(16);
  barLayout->addWidget(cbxParcel_);
  ratioLabel_ = new QLabel(Q(reports::messages::mapcheck::RatioLabel), bar);
  ratioLabel_->setObjectName("lblRatio");
  txtRatio_ = new QLineEdit(bar);
  txtRatio_->setObjectName("txtRatio");
  txtRatio_->setMaxLength(13);
  txtRatio_->setFixedWidth(txtRatio_->fontMetrics().horizontalAdvance(QStringLiteral("0000000000000")));
  barLayout->addWidget(ratioLabel_);
  barLayout->addWidget(txtRatio_);
  cmdPrint_ = new QPushButton(bar);
  cmdClose_ = new QPushButton(bar);
  cmdExport_ = new QPushButton(bar);
  cmdPrint_->setObjectName("cmdPrint");
  cmdClose_->setObjectName("cmdClose");
  cmdExport_->setObjectName("cmdExport");
  barLayout->addWidget(cmdPrint_);
  barLayout->addWidget(cmdClose_);
  barLayout->addWidget(cmdExport_);
  barLayout->addStretch();
  rtfReport_ = new QPlainTextEdit(this);
  rtfReport_->setObjectName("rtfReport");
  rtfReport_->setReadOnly(true);
  rtfReport_->setLineWrapMode(QPlainTextEdit::NoWrap);
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setFamilies({Q(form_.rtfReport.FontName), QStringLiteral("Nimbus Mono PS"),
                     QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Liberation Mono"),
                     fixed.family()});
  fixed.setStyleHint(QFont::TypeWriter);
  fixed.setFixedPitch(true);
  rtfReport_->setFont(fixed);
  auto* layout = qobject_cast<QVBoxLayout*>(this->layout());
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(bar);
  layout->addWidget(rtfReport_, 1);
  resize(static_cast<int>(form_.Width / kTwipsPerPixel), static_cast<int>(form_.Height / kTwipsPerPixel));
  bind();
  Refresh();
}

ReportWindow::~ReportWindow() = default;

void ReportWindow::BuildMenu() {
  auto* layout = new QVBoxLayout(this);
  auto* menuBar = new QMenuBar(this);
  menuBar->setObjectName("menuBar");
  QMenu* help = menuBar->addMenu(Q(form_.menus.mnuHelp.Caption));
  help->setObjectName("mnuHelp");
  for (const reports::ReportMenus::Entry& entry : reports::ReportMenus::Entries) {
    QAction* action = help->addAction(Q((form_.menus.*entry.item).Caption));
    action->setObjectName(entry.name);
    const std::string name = entry.name;
    connect(action, &QAction::triggered, this, [this, name] { Run([&] { form_.HelpMenu_Click(name); }); });
  }
  layout->setMenuBar(menuBar);
}

void ReportWindow::bind() {
  for (int i = 0; i < 3; ++i) {
    connect(optPassFail_[static_cast<std::size_t>(i)], &QRadioButton::clicked, this,
            [this, i] { Run([&] { form_.SetOptionValue(i, true); }); });
  }
  connect(cbxParcel_, qOverload<int>(&QComboBox::activated), this,
          [this](int index) { Run([&] { form_.SelectParcel(index); }); });
  connect(txtRatio_, &QLineEdit::editingFinished, this, [this] {
    const std::string text = txtRatio_->text().toStdString();
    if (ratioBusy_ || text == form_.txtRatio.Text) return;
    ratioBusy_ = true;
    Run([&] { form_.txtRatio_Change(text); });
    ratioBusy_ = false;
  });
  connect(cmdExport_, &QPushButton::clicked, this, [this] { Run([&] { form_.cmdExport_Click(); }); });
  connect(cmdPrint_, &QPushButton::clicked, this, [this] { Print(); });
  connect(cmdClose_, &QPushButton::clicked, this, [this] { close(); });
}

void ReportWindow::Run(const std::function<void()>& handler) {
  if (hooks_.guard) hooks_.guard(handler);
  else handler();
  Refresh();
}

void ReportWindow::Print() {
  const QTextCursor cursor = rtfReport_->textCursor();
  const std::string_view text = form_.rtfReport.Text;
  const std::size_t start = ReportCharacterAt(text, cursor.selectionStart());
  form_.rtfReport.SelStart = start;
  form_.rtfReport.SelLength = ReportCharacterAt(text, cursor.selectionEnd()) - start;
  const bool picture = form_.Kind() == reports::ReportKind::Picture;
  Run([&] { form_.cmdPrint_Click(); });
  // A picture run leaves the editor on another parcel.
  if (picture && hooks_.editorChanged) hooks_.editorChanged();
}

void ReportWindow::Refresh() {
  const reports::ReportForm& f = form_;
  setWindowTitle(Q(f.Caption));
  for (std::size_t i = 0; i < 3; ++i) {
    QSignalBlocker block(optPassFail_[i]);
    optPassFail_[i]->setText(Q(f.optPassFail[i].Caption));
    optPassFail_[i]->setToolTip(Q(f.optPassFail[i].ToolTipText));
    optPassFail_[i]->setAutoExclusive(false);
    optPassFail_[i]->setChecked(f.optPassFail[i].Value);
    optPassFail_[i]->setAutoExclusive(true);
  }
  {
    QSignalBlocker block(cbxParcel_);
    cbxParcel_->clear();
    for (const std::string& name : f.cbxParcel.List) cbxParcel_->addItem(Q(name));
    cbxParcel_->setCurrentIndex(f.cbxParcel.Text.empty() ? -1 : f.cbxParcel.ListIndex);
    cbxParcel_->setToolTip(Q(f.cbxParcel.ToolTipText));
  }
  for (auto [button, model] : {std::pair{cmdExport_, &f.cmdExport}, std::pair{cmdPrint_, &f.cmdPrint},
                               std::pair{cmdClose_, &f.cmdClose}}) {
    button->setText(Q(model->Caption));
    button->setToolTip(Q(model->ToolTipText));
  }
  {
    QSignalBlocker block(txtRatio_);
    if (txtRatio_->text().toStdString() != f.txtRatio.Text) txtRatio_->setText(Q(f.txtRatio.Text));
    txtRatio_->setToolTip(Q(f.txtRatio.ToolTipText));
    txtRatio_->setVisible(f.txtRatio.Visible);
    ratioLabel_->setVisible(f.txtRatio.Visible);
  }
  // The picture report keeps "Save as" outside its narrow window.
  cmdExport_->setVisible(f.Kind() != reports::ReportKind::Picture);
  rtfReport_->setVisible(f.rtfReport.Visible);
  rtfReport_->setToolTip(Q(f.rtfReport.ToolTipText));
  // The preview holds lines; the report's CR LF become its line ends.
  QString text = Q(f.rtfReport.Text);
  text.remove(QLatin1Char('\r'));
  if (rtfReport_->toPlainText() != text) rtfReport_->setPlainText(text);
}

void ReportWindow::Open(reports::ReportKind kind, bool editorSaveEnabled) {
  if (!reports::OpenReport(kind, editorSaveEnabled, form_)) return;
  form_.Form_Load();
  Refresh();
  if (kind == reports::ReportKind::Picture) {
    // The narrow window of the bar alone, measured once the preview is hidden.
    layout()->activate();
    resize(std::max(static_cast<int>(form_.Width / kTwipsPerPixel), minimumSizeHint().width()),
           sizeHint().height());
    move(static_cast<int>(form_.Left / kTwipsPerPixel), static_cast<int>(form_.Top / kTwipsPerPixel));
  }
  show();
}

void ReportWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  form_.Form_Activate();
  Refresh();
}

void ReportWindow::closeEvent(QCloseEvent* event) {
  form_.Form_Unload();
  event->accept();
}

void ReportWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  form_.ScaleWidth = width() * kTwipsPerPixel;
  form_.ScaleHeight = height() * kTwipsPerPixel;
  form_.Form_Resize();
}

std::optional<std::string> ReportWindow::ShowSave(const std::string& filter) {
  const QString name = QFileDialog::getSaveFileName(this, tr("Save as"), QString(), DialogFilter(filter));
  if (name.isEmpty()) return std::nullopt;
  return name.toStdString();
}

std::unique_ptr<QPrinter> ReportWindow::ChoosePrinter(bool selection) {
  if (chooser_) return chooser_(selection);
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  QPrintDialog dialog(printer.get(), this);
  if (selection) {
    dialog.setOption(QAbstractPrintDialog::PrintSelection);
    printer->setPrintRange(QPrinter::Selection);
  }
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  return printer;
}

std::unique_ptr<Printer> ReportWindow::ShowPrinter(int flags) {
  std::unique_ptr<QPrinter> printer = ChoosePrinter((flags & 1) != 0);
  if (!printer) return nullptr;
  return QtPrinter::ForPrinter(std::move(printer));
}

std::unique_ptr<Printer> ReportWindow::PicturePrinter() { return ShowPrinter(0); }

void ReportWindow::SetReportTopmost() {
  // A window flag changed on a shown window hides it; a window of the main
  // window stands above it anyway, and is brought to the front.
  raise();
  activateWindow();
}

void ReportWindow::SetEditorTopmost(bool topmost) {
  if (!editorWindow_) return;
  editorWindow_->setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
  if (editorWindow_->isVisible() || topmost) editorWindow_->show();
}

void ReportWindow::MoveEditorOffScreen() {
  if (editorWindow_) editorWindow_->move(static_cast<int>(ScreenWidth() / kTwipsPerPixel),
                                         static_cast<int>(ScreenHeight() / kTwipsPerPixel));
}

void ReportWindow::CenterEditor() {
  if (!editorWindow_) return;
  const QRect screen = QApplication::primaryScreen()->availableGeometry();
  editorWindow_->move(screen.center() - editorWindow_->rect().center());
}

void ReportWindow::DoEvents() { QApplication::processEvents(); }

void ReportWindow::RunMainMenu(const std::string& name) {
  if (hooks_.mainMenu) hooks_.mainMenu(name);
}

double ReportWindow::ScreenWidth() const {
  return QApplication::primaryScreen()->geometry().width() * kTwipsPerPixel;
}

double ReportWindow::ScreenHeight() const {
  return QApplication::primaryScreen()->geometry().height() * kTwipsPerPixel;
}

}  // namespace parvenna::ui
