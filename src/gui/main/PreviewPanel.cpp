#include "PreviewPanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include "Action/MediaItemSummary.h"
#include "CommonClass/CommonClass.h"

PreviewPanel::PreviewPanel(QWidget* parent) : QWidget(parent) {
  stage_ = new QLabel(this);
  stage_->setAlignment(Qt::AlignCenter);
  stage_->setMinimumSize(320, 180);
  stage_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  stage_->setAutoFillBackground(true);
  QPalette dark = stage_->palette();
  dark.setColor(QPalette::Window, QColor(16, 16, 20));
  dark.setColor(QPalette::WindowText, QColor(150, 150, 160));
  stage_->setPalette(dark);

  slider_ = new QSlider(Qt::Horizontal, this);
  slider_->setAccessibleName(tr("Position"));
  time_ = new QLabel(QStringLiteral("00:00:00|00:00:00"), this);
  time_->setFont(QFont(QStringLiteral("monospace")));

  play_ = addButton(QStyle::SP_MediaPlay, tr("Play"));
  pause_ = addButton(QStyle::SP_MediaPause, tr("Pause"));
  stop_ = addButton(QStyle::SP_MediaStop, tr("Stop"));
  snapshot_ = addButton(QStyle::SP_DialogSaveButton, tr("Take a snapshot"));
  snapshotFolder_ = addButton(QStyle::SP_DirOpenIcon, tr("Open the snapshot folder"));
  connect(snapshotFolder_, &QToolButton::clicked, this, &PreviewPanel::snapshotFolderRequested);

  auto* controls = new QHBoxLayout;
  controls->setSpacing(4);
  for (QToolButton* button : {play_, pause_, stop_}) controls->addWidget(button);
  controls->addWidget(slider_, 1);
  controls->addWidget(time_);
  controls->addWidget(snapshot_);
  controls->addWidget(snapshotFolder_);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(stage_, 1);
  layout->addLayout(controls);
  setPlaybackAvailable(false);
  setItem(nullptr);
}

QToolButton* PreviewPanel::addButton(QStyle::StandardPixmap icon, const QString& toolTip) {
  auto* button = new QToolButton(this);
  button->setIcon(style()->standardIcon(icon));
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  button->setAutoRaise(true);
  return button;
}

void PreviewPanel::setPlaybackAvailable(bool available) {
  for (QWidget* control : std::initializer_list<QWidget*>{play_, pause_, stop_, snapshot_, slider_}) {
    control->setEnabled(available);
  }
}

void PreviewPanel::setItem(const NodeInfo::Ptr& item) {
  if (item == nullptr) {
    picturePath_.clear();
    stage_->setPixmap({});
    stage_->setText(tr("Add files to preview them here"));
    time_->setText(QStringLiteral("00:00:00|00:00:00"));
    return;
  }
  const MediaItemSummary summary = MediaItemSummary::of(*item);
  picturePath_ = summary.thumbnailPath;
  time_->setText(QStringLiteral("%1|%2").arg(CommonClass::formatTimeForDouble(0), summary.duration));
  showPicture();
  if (picturePath_.isEmpty()) stage_->setText(summary.hasVideo ? summary.name : tr("%1 (sound only)").arg(summary.name));
}

void PreviewPanel::showPicture() {
  const QPixmap picture(picturePath_);
  if (picture.isNull()) {
    stage_->setPixmap({});
    return;
  }
  const qreal scale = devicePixelRatioF();
  QPixmap shown = picture.scaled(stage_->size() * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  shown.setDevicePixelRatio(scale);
  stage_->setPixmap(shown);
}

void PreviewPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  showPicture();
}
