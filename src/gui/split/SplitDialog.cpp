#include "SplitDialog.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "Action/NodeInfoAction.h"
#include "widgets/ItemStrip.h"

SplitDialog::SplitDialog(MainFormController& main, const NodeInfo::Ptr& node, QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("Split"));
  setModal(true);
  controller_.setDelegate(&main);
  main.setIsShowWindow(true);
  const NodeInfo::List items = NodeInfoAction::getSuitableNode(main.db());

  strip_ = new ItemStrip(items, this);

  byMinutes_ = new QRadioButton(tr("Split every"), this);
  byClips_ = new QRadioButton(tr("Split into"), this);
  auto* rows = new QButtonGroup(this);
  rows->addButton(byMinutes_, SplitController::kRowMinutes);
  rows->addButton(byClips_, SplitController::kRowClips);
  minutes_ = new QLineEdit(this);
  clips_ = new QLineEdit(this);
  for (QLineEdit* field : {minutes_, clips_}) {
    field->setValidator(new QIntValidator(field));
    field->setMaximumWidth(80);
  }
  minutes_->setAccessibleName(tr("Minutes"));
  clips_->setAccessibleName(tr("Clips"));
  length_ = new QLabel(this);

  auto* form = new QGridLayout;
  form->addWidget(new QLabel(tr("Length:"), this), 0, 0);
  form->addWidget(length_, 0, 1, 1, 2);
  form->addWidget(byMinutes_, 1, 0);
  form->addWidget(minutes_, 1, 1);
  form->addWidget(new QLabel(tr("minutes"), this), 1, 2);
  form->addWidget(byClips_, 2, 0);
  form->addWidget(clips_, 2, 1);
  form->addWidget(new QLabel(tr("clips"), this), 2, 2);
  form->setRowStretch(3, 1);

  auto* buttons = new QDialogButtonBox(this);
  QPushButton* reset = buttons->addButton(tr("Reset"), QDialogButtonBox::ResetRole);
  QPushButton* done = buttons->addButton(tr("Done"), QDialogButtonBox::AcceptRole);
  buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
  done->setDefault(true);

  auto* body = new QHBoxLayout;
  body->addWidget(strip_);
  body->addLayout(form, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(body);
  layout->addWidget(buttons);

  connect(rows, &QButtonGroup::idClicked, &controller_, &SplitController::radioSelectClick);
  connect(minutes_, &QLineEdit::textEdited, &controller_, &SplitController::setMinutesText);
  connect(clips_, &QLineEdit::textEdited, &controller_, &SplitController::setClipsText);
  connect(reset, &QPushButton::clicked, &controller_, &SplitController::resetButtonClick);
  connect(done, &QPushButton::clicked, &controller_, &SplitController::doneButtonClick);
  connect(buttons, &QDialogButtonBox::rejected, &controller_, &SplitController::cancelButtonClick);
  connect(&controller_, &SplitController::formChanged, this, &SplitDialog::showForm);
  connect(&controller_, &SplitController::windowClosed, this, &QDialog::accept);
  connect(strip_, &ItemStrip::itemChosen, &controller_, &SplitController::itemViewClick);

  controller_.showWindowModal(items, node);
  strip_->showItem(controller_.currentNode());
  showForm();
}

void SplitDialog::showForm() {
  showing_ = true;
  const bool minutesRow = controller_.selectedRow() == SplitController::kRowMinutes;
  byMinutes_->setChecked(minutesRow);
  byClips_->setChecked(!minutesRow);
  minutes_->setEnabled(controller_.isMinutesEnabled());
  clips_->setEnabled(controller_.isClipsEnabled());
  if (minutes_->text() != controller_.minutesText()) minutes_->setText(controller_.minutesText());
  if (clips_->text() != controller_.clipsText()) clips_->setText(controller_.clipsText());
  length_->setText(controller_.lengthText());
  showing_ = false;
}

void SplitDialog::reject() {
  if (controller_.windowShouldClose()) QDialog::reject();
}
