#include "PreviewPanel.h"

#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include "Action/MediaItemSummary.h"
#include "CommonClass/CommonClass.h"
#include "sound/PreviewSound.h"
#include "widgets/PreviewView.h"

namespace {

// The slider counts milliseconds; the player speaks seconds.
constexpr double kSliderSteps = 1000.0;

}  // namespace

PreviewPanel::PreviewPanel(QWidget* parent) : QWidget(parent) {
  sound_ = new PreviewSound(this);
  view_ = new PreviewView(this);
  view_->setSound(sound_);
  view_->setMinimumSize(320, 180);
  view_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  view_->setAccessibleName(tr("Preview"));
  player_.setDelegate(this);

  slider_ = new QSlider(Qt::Horizontal, this);
  slider_->setAccessibleName(tr("Position"));
  time_ = new QLabel(QLatin1String(PlayVideoAction::kStoppedLabel), this);
  time_->setFont(QFont(QStringLiteral("monospace")));

  play_ = addButton(QStyle::SP_MediaPlay, tr("Play"));
  pause_ = addButton(QStyle::SP_MediaPause, tr("Pause"));
  stop_ = addButton(QStyle::SP_MediaStop, tr("Stop"));
  snapshot_ = addButton(QStyle::SP_DialogSaveButton, tr("Take a snapshot"));
  snapshotFolder_ = addButton(QStyle::SP_DirOpenIcon, tr("Open the snapshot folder"));
  connect(play_, &QToolButton::clicked, this, &PreviewPanel::play);
  connect(pause_, &QToolButton::clicked, this, [this] {
    player_.pauseVideo();
    paused_ = true;
    updateButtons();
  });
  connect(stop_, &QToolButton::clicked, this, &PreviewPanel::stop);
  connect(snapshot_, &QToolButton::clicked, this, &PreviewPanel::snapshotRequested);
  connect(snapshotFolder_, &QToolButton::clicked, this, &PreviewPanel::snapshotFolderRequested);

  connect(&player_, &PlayVideoAction::sliderChanged, this, &PreviewPanel::showSlider);
  connect(&player_, &PlayVideoAction::timeLabelChanged, time_, &QLabel::setText);
  connect(slider_, &QSlider::sliderPressed, this, [this] { player_.setIsDragSlider(true); });
  connect(slider_, &QSlider::sliderMoved, this, [this](int value) { player_.playSlideChange(value / kSliderSteps); });
  connect(slider_, &QSlider::sliderReleased, this, [this] {
    player_.playSlideChange(slider_->value() / kSliderSteps);
    player_.setIsDragSlider(false);
  });
  // Keys on the keyboard move a slider without a press.
  connect(slider_, &QSlider::actionTriggered, this, [this](int action) {
    if (action != QAbstractSlider::SliderMove) {
      QMetaObject::invokeMethod(
          this, [this] { player_.playSlideChange(slider_->value() / kSliderSteps); }, Qt::QueuedConnection);
    }
  });

  connect(view_, &PreviewView::playPauseRequested, this, &PreviewPanel::togglePlaying);
  connect(view_, &PreviewView::frameStepRequested, this, [this](int direction) {
    player_.stepPicture(direction);
    paused_ = true;
    updateButtons();
  });
  connect(view_, &PreviewView::secondStepRequested, this, [this](int direction) {
    player_.stepSecond(direction);
    paused_ = true;
    updateButtons();
  });
  connect(view_, &PreviewView::startRequested, this, [this] { player_.goToStart(); });
  connect(view_, &PreviewView::endRequested, this, [this] { player_.goToEnd(); });

  auto* controls = new QHBoxLayout;
  controls->setSpacing(4);
  for (QToolButton* button : {play_, pause_, stop_}) controls->addWidget(button);
  controls->addWidget(slider_, 1);
  controls->addWidget(time_);
  controls->addWidget(snapshot_);
  controls->addWidget(snapshotFolder_);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_, 1);
  layout->addLayout(controls);
  setItem(nullptr);
}

// The renderer hands pictures and sound to the view until it is stopped.
PreviewPanel::~PreviewPanel() { player_.stopPlay(); }

QToolButton* PreviewPanel::addButton(QStyle::StandardPixmap icon, const QString& toolTip) {
  auto* button = new QToolButton(this);
  button->setIcon(style()->standardIcon(icon));
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  button->setAutoRaise(true);
  return button;
}

void PreviewPanel::setItem(const NodeInfo::Ptr& item) {
  if (item != nullptr && item == item_) return;
  stop();
  item_ = item;
  if (item == nullptr) {
    view_->setStill({});
    view_->setToolTip(tr("Add files to preview them here"));
  } else {
    const MediaItemSummary summary = MediaItemSummary::of(*item);
    view_->setStill(QImage(summary.thumbnailPath));
    view_->setToolTip(summary.hasVideo ? summary.name : tr("%1 (sound only)").arg(summary.name));
  }
  showLength();
  updateButtons();
}

void PreviewPanel::showLength() {
  if (item_ == nullptr) return;
  time_->setText(
      QStringLiteral("%1|%2").arg(CommonClass::formatTimeForDouble(0), MediaItemSummary::of(*item_).duration));
}

void PreviewPanel::itemEdited(const NodeInfo::Ptr& item) {
  if (item == item_ && player_.isPlaying()) player_.updateMediaData(item);
}

void PreviewPanel::play() {
  if (item_ == nullptr) return;
  view_->setFocus();
  if (!player_.isPlaying()) {
    player_.setVideoView({view_->renderView(), view_->width(), view_->height()});
    player_.playVideo(item_);
  } else {
    player_.playVideo(item_);  // resumes
  }
  paused_ = false;
  updateButtons();
}

void PreviewPanel::togglePlaying() {
  if (player_.isPlaying() && !paused_) {
    player_.pauseVideo();
    paused_ = true;
    updateButtons();
  } else {
    play();
  }
}

void PreviewPanel::stop() {
  player_.stopPlay();
  view_->clearPicture();
  paused_ = false;
  showLength();
  updateButtons();
}

int32_t PreviewPanel::takeSnapshot(const QString& path, int32_t imageType) {
  return player_.photoCurFile(path, imageType);
}

void PreviewPanel::playVideoEnd() { stop(); }

void PreviewPanel::updateButtons() {
  const bool playing = player_.isPlaying();
  play_->setEnabled(item_ != nullptr && (!playing || paused_));
  pause_->setEnabled(playing && !paused_);
  stop_->setEnabled(playing);
  snapshot_->setEnabled(playing);
  slider_->setEnabled(playing);
}

void PreviewPanel::showSlider(double minimum, double value, double maximum) {
  slider_->setRange(static_cast<int>(minimum * kSliderSteps), static_cast<int>(maximum * kSliderSteps));
  if (!slider_->isSliderDown()) slider_->setValue(static_cast<int>(value * kSliderSteps));
}
