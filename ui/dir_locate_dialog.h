#pragma once

#include <functional>

#include <QComboBox>
#include <QFileSystemModel>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

#include "store/create_form.h"
#include "ui/form_dialog.h"

namespace parvenna::ui {

// "Locate the project path" over a DirLocateForm: a drive list and a tree of
// directories in place of the drive and directory lists, with OK and Cancel.
// Window-modal over the create dialog that opened it.
class DirLocateDialog : public FormDialog {
 public:
  DirLocateDialog(store::DirLocateForm& form, Prompter& prompter, QWidget* parent = nullptr);

  void bind();
  void Refresh() override;
  // Shows the form once its model is visible: centred, above other windows.
  // An empty directory starts at the program's working directory, as the old
  // directory list did.
  void ShowForm();
  // Called when the form hides itself, by OK or Cancel.
  std::function<void()> onHidden;

  QComboBox* Drive1() const { return drive1_; }
  QTreeView* Dir1() const { return dir1_; }
  QPushButton* cmdOK() const { return cmdOK_; }
  QPushButton* cmdCancel() const { return cmdCancel_; }

 protected:
  void reject() override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void MirrorDirectory();
  void Reveal(const QModelIndex& index);

  store::DirLocateForm& form_;
  QFileSystemModel* directories_ = nullptr;
  QComboBox* drive1_ = nullptr;
  QTreeView* dir1_ = nullptr;
  QLabel* path_ = nullptr;
  QPushButton* cmdOK_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  bool revealPending_ = false;  // the chosen directory is kept in view
  bool revealing_ = false;
};

}  // namespace parvenna::ui
