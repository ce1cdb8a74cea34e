#include "DownloadSettingsSheet.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

template <class Widget>
Widget* named(Widget* widget, const char* skinName) {
  widget->setObjectName(QLatin1String(skinName));
  return widget;
}

}  // namespace

DownloadSettingsSheet::DownloadSettingsSheet(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("winDownloadSet"));
  setWindowTitle(tr("Download Settings"));
  setWindowModality(Qt::WindowModal);

  auto* grid = new QGridLayout;
  grid->addWidget(named(new QLabel(tr("Quality:"), this), "winDownloadSet.labQuality"), 0, 0);
  auto* qualities = named(new QWidget(this), "winDownloadSet.rgdSelect");
  auto* qualityRow = new QHBoxLayout(qualities);
  qualityRow->setContentsMargins(0, 0, 0, 0);
  rgdSelect_ = new QButtonGroup(this);
  const QStringList columns{tr("Highest"), tr("Middle"), tr("Lowest")};
  for (int column = 0; column < columns.size(); ++column) {
    auto* choice = new QRadioButton(columns[column], qualities);
    rgdSelect_->addButton(choice, column);
    qualityRow->addWidget(choice);
  }
  qualityRow->addStretch();
  grid->addWidget(qualities, 0, 1, 1, 3);

  grid->addWidget(named(new QLabel(tr("Save to:"), this), "winDownloadSet.labSaveTo"), 1, 0);
  txtfldPath_ = named(new QLineEdit(this), "winDownloadSet.txtfldPath");
  txtfldPath_->setMinimumWidth(320);
  grid->addWidget(txtfldPath_, 1, 1);
  auto* selectPath = named(new QPushButton(tr("Choose…"), this), "winDownloadSet.btSelectPath");
  auto* openFolder = named(new QPushButton(tr("Open"), this), "winDownloadSet.btOpenFolder");
  grid->addWidget(selectPath, 1, 2);
  grid->addWidget(openFolder, 1, 3);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  auto* cancel = named(new QPushButton(tr("Cancel"), this), "winDownloadSet.btCancel");
  auto* ok = named(new QPushButton(tr("OK"), this), "winDownloadSet.btOK");
  ok->setDefault(true);
  buttons->addWidget(cancel);
  buttons->addWidget(ok);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addSpacing(8);
  layout->addLayout(buttons);

  for (QPushButton* each : {selectPath, openFolder, cancel}) each->setAutoDefault(false);
  connect(selectPath, &QPushButton::clicked, this, [this] {
    takeFields();
    controller_.selectPathClick();
  });
  connect(openFolder, &QPushButton::clicked, this, [this] {
    takeFields();
    controller_.openFolderClick();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ok, &QPushButton::clicked, this, [this] {
    takeFields();
    controller_.okClick();
    accept();
  });
  connect(&controller_, &DownloadSettingFormController::fieldsChanged, this, &DownloadSettingsSheet::showFields);
  controller_.showSheet();
}

void DownloadSettingsSheet::showFields() {
  if (QAbstractButton* chosen = rgdSelect_->button(controller_.selectedQuality())) chosen->setChecked(true);
  txtfldPath_->setText(controller_.pathField());
}

void DownloadSettingsSheet::takeFields() {
  const QSignalBlocker quiet(&controller_);
  controller_.setSelectedQuality(rgdSelect_->checkedId() < 0 ? controller_.selectedQuality() : rgdSelect_->checkedId());
  controller_.setPathField(txtfldPath_->text());
}
