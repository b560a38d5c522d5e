#pragma once

#include <array>
#include <unordered_map>

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "store/setting_form.h"
#include "ui/form_dialog.h"

class QBoxLayout;
class QGridLayout;

namespace parvenna::ui {

// "Project Options" over a SettingForm: the order of the curve fields with its
// arrows, the numbers and switches, the tangential tolerance, the units, the
// notation and the drawing's colours. Every key typed in a box passes the
// form's filter first; every change goes to the form, which decides what
// Apply writes.
//
// The application loads the form (Form_Load) and then calls ShowForm. Not
// modal; above the other windows while it shows. It hides itself when the
// form unloads: OK, Cancel, Escape or the close box.
class SettingDialog : public FormDialog {
 public:
  SettingDialog(store::SettingForm& form, Prompter& prompter, QWidget* parent = nullptr);

  void bind();
  void Refresh() override;
  void ShowForm();

  QLabel* lblOrder(int i) const { return lblOrder_.at(static_cast<std::size_t>(i)); }
  QLineEdit* txtTolerance() const { return txtTolerance_; }
  QLineEdit* txtErrDecimal() const { return txtErrDecimal_; }
  QLineEdit* txtDegreeSymbol() const { return txtDegreeSymbol_; }
  QLineEdit* txtWarning(int i) const { return txtWarning_.at(static_cast<std::size_t>(i)); }
  QLineEdit* txtTangentTolerance(int i) const {
    return txtTangentTolerance_.at(static_cast<std::size_t>(i));
  }
  QCheckBox* chkMini() const { return chkMini_; }
  QCheckBox* chkCurveOpt() const { return chkCurveOpt_; }
  QCheckBox* chkAutoInvert() const { return chkAutoInvert_; }
  QCheckBox* chkTangent() const { return chkTangent_; }
  QCheckBox* chkToolTip() const { return chkToolTip_; }
  QRadioButton* optFeet(int i) const { return Option(optFeet_, i); }
  QRadioButton* optSquareAcres(int i) const { return Option(optSquareAcres_, i); }
  QRadioButton* optSquareMeters(int i) const { return Option(optSquareMeters_, i); }
  QRadioButton* optBearing(int i) const { return Option(optBearing_, i); }
  QRadioButton* optBackColor(int i) const { return Option(optBackColor_, i); }
  QRadioButton* optForeColor(int i) const { return Option(optForeColor_, i); }
  QGroupBox* frameSub(int i) const { return frameSub_.at(static_cast<std::size_t>(i)); }
  QGroupBox* frameTangential() const { return frameTangential_; }
  QPushButton* cmdOK() const { return cmdOK_; }
  QPushButton* cmdApply() const { return cmdApply_; }
  QPushButton* cmdDefault() const { return cmdDefault_; }
  QPushButton* cmdAsDefault() const { return cmdAsDefault_; }
  QPushButton* cmdCancel() const { return cmdCancel_; }
  QToolButton* cmdForward() const { return cmdForward_; }
  QToolButton* cmdBackward() const { return cmdBackward_; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void reject() override;
  void closeEvent(QCloseEvent* event) override;

 private:
  static QRadioButton* Option(QButtonGroup* group, int i) {
    return qobject_cast<QRadioButton*>(group->button(i));
  }
  QWidget* BuildOrder();
  QWidget* BuildSwitches();
  QWidget* BuildTangential();
  QWidget* BuildUnits();
  QWidget* BuildColours();
  QLayout* BuildButtons();
  QLineEdit* Edit(TextBox& box, int characters);
  QCheckBox* Check(CheckBox& box);
  template <std::size_t N>
  QButtonGroup* Options(QGroupBox* frame, QBoxLayout* into, std::array<OptionButton, N>& models,
                        void (store::SettingForm::*click)(int));
  QPushButton* Command(void (store::SettingForm::*click)());
  void AddArcRow(QGridLayout* grid, int row, std::array<QLineEdit*, 3>& boxes,
                 std::array<QLabel*, 5>& labels, const char* lead, const char* tail);
  bool FilterKey(QLineEdit* edit, class QKeyEvent* key);

  store::SettingForm& form_;
  std::unordered_map<const QLineEdit*, TextBox*> boxes_;
  std::unordered_map<const QCheckBox*, CheckBox*> checks_;

  std::array<QLabel*, 4> lblOrder_{};
  QToolButton* cmdForward_ = nullptr;
  QToolButton* cmdBackward_ = nullptr;
  QLineEdit* txtTolerance_ = nullptr;
  QLineEdit* txtErrDecimal_ = nullptr;
  QLineEdit* txtDegreeSymbol_ = nullptr;
  std::array<QLineEdit*, 3> txtWarning_{};
  std::array<QLineEdit*, 3> txtTangentTolerance_{};
  std::array<QLabel*, 5> lblWarning_{};
  std::array<QLabel*, 5> lblTangentTolerance_{};
  QCheckBox *chkMini_ = nullptr, *chkCurveOpt_ = nullptr, *chkAutoInvert_ = nullptr,
            *chkTangent_ = nullptr, *chkToolTip_ = nullptr;
  QGroupBox* frameTangential_ = nullptr;
  std::array<QGroupBox*, 2> frameSub_{};
  QButtonGroup *optFeet_ = nullptr, *optSquareAcres_ = nullptr, *optSquareMeters_ = nullptr,
               *optBearing_ = nullptr, *optBackColor_ = nullptr, *optForeColor_ = nullptr;
  QPushButton *cmdOK_ = nullptr, *cmdApply_ = nullptr, *cmdDefault_ = nullptr,
              *cmdAsDefault_ = nullptr, *cmdCancel_ = nullptr;
};

}  // namespace parvenna::ui
