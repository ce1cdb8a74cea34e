#include "SettingsDialog.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

using List = SettingFormAction::List;

}  // namespace

SettingsDialog::SettingsDialog(const KMVProfileDataInfo& entry, NodeInfo::Ptr item, QWidget* parent)
    : QDialog(parent), item_(std::move(item)) {
  setWindowTitle(tr("Settings: %1").arg(entry.DisplayName));
  action_.setDefaultValue(entry);
  action_.displayWithProfileSettingInfo(item_->curProfileSetting());

  auto* video = new QGroupBox(tr("Video"), this);
  auto* videoForm = new QFormLayout(video);
  videoForm->addRow(tr("Encoder:"), addList(List::VideoEncoder));
  auto* sizeRow = new QHBoxLayout;
  sizeRow->addWidget(addList(List::VideoResolution), 1);
  width_ = new QLineEdit(video);
  height_ = new QLineEdit(video);
  times_ = new QLabel(QStringLiteral("x"), video);
  for (QLineEdit* field : {width_, height_}) {
    field->setValidator(new QIntValidator(0, 99999, field));
    field->setMaximumWidth(64);
    field->setAlignment(Qt::AlignRight);
    connect(field, &QLineEdit::textEdited, this, [this] { action_.setCustomSize(width_->text(), height_->text()); });
  }
  width_->setAccessibleName(tr("Width"));
  height_->setAccessibleName(tr("Height"));
  sizeRow->addWidget(width_);
  sizeRow->addWidget(times_);
  sizeRow->addWidget(height_);
  videoForm->addRow(tr("Resolution:"), sizeRow);
  videoForm->addRow(tr("Frame rate:"), addList(List::VideoFrameRate));
  videoForm->addRow(tr("Bitrate (kbit/s):"), addList(List::VideoBitrate));
  auto* qualityRow = new QHBoxLayout;
  quality_ = new QButtonGroup(this);
  const char* columns[] = {"Best", "Normal", "Smallest"};
  for (int column = 0; column < 3; ++column) {
    auto* choice = new QRadioButton(tr(columns[column]), video);
    quality_->addButton(choice, column);
    qualityRow->addWidget(choice);
  }
  connect(quality_, &QButtonGroup::idClicked, &action_, &SettingFormAction::setQualityColumn);
  videoForm->addRow(tr("Quality:"), qualityRow);

  auto* audio = new QGroupBox(tr("Audio"), this);
  auto* audioForm = new QFormLayout(audio);
  audioForm->addRow(tr("Encoder:"), addList(List::AudioEncoder));
  audioForm->addRow(tr("Sample rate (Hz):"), addList(List::AudioSampleRate));
  audioForm->addRow(tr("Channels:"), addList(List::AudioChannels));
  audioForm->addRow(tr("Bitrate (kbit/s):"), addList(List::AudioBitrate));

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(video);
  layout->addWidget(audio);
  layout->addWidget(buttons);
  connect(&action_, &SettingFormAction::changed, this, &SettingsDialog::refresh);
  refresh();
}

QComboBox* SettingsDialog::addList(List which) {
  auto* list = new QComboBox(this);
  list->setMinimumWidth(160);
  lists_[static_cast<size_t>(which)] = list;
  connect(list, &QComboBox::activated, this, [this, which](int index) {
    if (!refreshing_) action_.select(which, index);
  });
  return list;
}

void SettingsDialog::refresh() {
  refreshing_ = true;
  for (int which = 0; which < SettingFormAction::kListCount; ++which) {
    const SettingFormAction::ListState& state = action_.list(static_cast<List>(which));
    QComboBox* list = lists_[static_cast<size_t>(which)];
    QStringList shown = state.values;
    if (static_cast<List>(which) == List::VideoResolution) {
      shown.replaceInStrings(QStringLiteral("0x0"), tr("Same as the source"));
      if (!shown.isEmpty()) shown.last() = tr("Custom");
    }
    if (list->count() != shown.size()) {
      list->clear();
      list->addItems(shown);
    } else {
      for (int index = 0; index < shown.size(); ++index) list->setItemText(index, shown[index]);
    }
    list->setCurrentIndex(state.selected);
    list->setEnabled(state.enabled);
  }
  const bool custom = action_.isCustomResolution();
  for (QWidget* part : std::initializer_list<QWidget*>{width_, height_, times_}) part->setVisible(custom);
  if (width_->text() != action_.customWidth()) width_->setText(action_.customWidth());
  if (height_->text() != action_.customHeight()) height_->setText(action_.customHeight());
  if (QAbstractButton* column = quality_->button(action_.qualityColumn())) column->setChecked(true);
  for (QAbstractButton* column : quality_->buttons()) column->setEnabled(action_.list(List::VideoEncoder).enabled);
  refreshing_ = false;
}

void SettingsDialog::accept() {
  if (action_.settingFinish(*item_)) QDialog::accept();
}
