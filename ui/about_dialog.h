#pragma once

#include <string>

#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace parvenna::ui {

// frmAbout, "About Parvenna": the program's name and version and the credits
// that the system store gives (ReadCredits). The application shows it modal
// over the main window: AboutDialog(version, store.ReadCredits(), main).exec().
class AboutDialog : public QDialog {
 public:
  AboutDialog(const std::string& versionLine, const std::string& credits, QWidget* parent = nullptr);

  QLabel* lblPrgVer() const { return version_; }
  QPlainTextEdit* txtCredits() const { return credits_; }
  QPushButton* cmdOK() const { return ok_; }

 private:
  QLabel* version_ = nullptr;
  QPlainTextEdit* credits_ = nullptr;
  QPushButton* ok_ = nullptr;
};

}  // namespace parvenna::ui
