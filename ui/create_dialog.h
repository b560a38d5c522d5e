#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "store/create_form.h"
#include "ui/dir_locate_dialog.h"
#include "ui/form_dialog.h"

namespace parvenna::ui {

// "Create new project" over a CreateForm. Not modal: the main window stays in
// use. It keeps above the other windows and forwards each coming to the front
// to the form (Form_Activate), which is how a directory chosen in the locate
// dialog reaches the location box. The browse buttons run the form's
// handlers; the drawing's file dialog is the form's to ask for.
//
// The application loads the form (Form_Load) and then calls ShowForm. The
// dialog hides itself when the form unloads: a create that worked, Cancel,
// Escape or the close box.
class CreateDialog : public FormDialog {
 public:
  CreateDialog(store::CreateForm& form, Prompter& prompter, QWidget* parent = nullptr);

  void bind();
  void Refresh() override;
  void ShowForm();

  QLineEdit* txtProjectName() const { return txtProjectName_; }
  QLineEdit* txtProjectLocation() const { return txtProjectLocation_; }
  QLineEdit* txtCADFile() const { return txtCADFile_; }
  QCheckBox* chkAutoName() const { return chkAutoName_; }
  QPushButton* cmdBrowseLoc() const { return cmdBrowseLoc_; }
  QPushButton* cmdBrowseCAD() const { return cmdBrowseCAD_; }
  QPushButton* cmdCreate() const { return cmdCreate_; }
  QPushButton* cmdCancel() const { return cmdCancel_; }
  DirLocateDialog* frmDirLocate() const { return dirLocate_; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void reject() override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QLineEdit* Edit(const char* name, const std::string& toolTip);
  QPushButton* Command(const char* name, void (store::CreateForm::*click)());
  void FollowFocus();

  store::CreateForm& form_;
  QLineEdit* txtProjectName_ = nullptr;
  QLineEdit* txtProjectLocation_ = nullptr;
  QLineEdit* txtCADFile_ = nullptr;
  QCheckBox* chkAutoName_ = nullptr;
  QPushButton* cmdBrowseLoc_ = nullptr;
  QPushButton* cmdBrowseCAD_ = nullptr;
  QPushButton* cmdCreate_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  DirLocateDialog* dirLocate_ = nullptr;
};

}  // namespace parvenna::ui
