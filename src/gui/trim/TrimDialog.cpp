#include "TrimDialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include "sound/PreviewSound.h"
#include "trim/SegmentTableModel.h"
#include "widgets/PreviewView.h"
#include "widgets/TrimMarkers.h"
#include "widgets/ItemStrip.h"

namespace {

// The size the preview starts in; it is drawn scaled to the view afterwards.
constexpr QSize kPreviewSize(480, 270);

}  // namespace

TrimDialog::TrimDialog(MainFormController& main, const NodeInfo::Ptr& node, QWidget* parent)
    : QDialog(parent), controller_(main.db()) {
  setWindowTitle(tr("Trim"));
  setModal(true);
  controller_.setDelegate(&main);
  main.setIsShowWindow(true);
  const NodeInfo::List items = TrimFormController::getSuitableNode(main.db());

  strip_ = new ItemStrip(items, this);

  sound_ = new PreviewSound(this);
  view_ = new PreviewView(this);
  view_->setSound(sound_);
  view_->setMinimumSize(kPreviewSize);
  view_->resize(kPreviewSize);
  view_->setAccessibleName(tr("Preview"));
  markers_ = new TrimMarkers(this);
  time_ = new QLabel(QLatin1String(PlayVideoAction::kStoppedLabel), this);
  time_->setFont(QFont(QStringLiteral("monospace")));

  play_ = addButton(tr("Play"), tr("Play"));
  pause_ = addButton(tr("Pause"), tr("Pause"));
  stop_ = addButton(tr("Stop"), tr("Stop"));
  QToolButton* markIn = addButton(tr("In"), tr("Mark as in"));
  QToolButton* markOut = addButton(tr("Out"), tr("Mark as out"));
  QToolButton* playTrim = addButton(tr("Play segment"), tr("Play triming movies"));
  auto* transport = new QHBoxLayout;
  for (QToolButton* button : {play_, pause_, stop_, markIn, markOut, playTrim}) transport->addWidget(button);
  transport->addStretch();
  transport->addWidget(time_);

  auto* steppers = new QHBoxLayout;
  steppers->addWidget(makeStepper(true));
  steppers->addStretch();
  steppers->addWidget(makeStepper(false));

  model_ = new SegmentTableModel(controller_, this);
  table_ = new QTableView(this);
  table_->setModel(model_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  table_->setAccessibleName(tr("Segments"));
  auto* addSegment = new QPushButton(tr("Add segment"), this);
  auto* deleteSegment = new QPushButton(tr("Delete segment"), this);
  addSegment->setToolTip(tr("Add segment"));
  deleteSegment->setToolTip(tr("Delete segment"));
  merge_ = new QCheckBox(tr("Merge into one file"), this);
  auto* done = new QPushButton(tr("Done"), this);
  auto* cancel = new QPushButton(tr("Cancel"), this);
  done->setDefault(true);
  auto* tableButtons = new QHBoxLayout;
  tableButtons->addWidget(addSegment);
  tableButtons->addWidget(deleteSegment);
  tableButtons->addStretch();
  tableButtons->addWidget(merge_);
  tableButtons->addSpacing(24);
  tableButtons->addWidget(done);
  tableButtons->addWidget(cancel);

  auto* centre = new QVBoxLayout;
  centre->addWidget(view_, 1);
  centre->addWidget(markers_);
  centre->addLayout(transport);
  centre->addLayout(steppers);
  centre->addWidget(table_);
  centre->addLayout(tableButtons);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(strip_);
  layout->addLayout(centre, 1);

  PlayVideoAction& player = controller_.player();
  connect(&player, &PlayVideoAction::sliderChanged, this,
          [this](double, double value, double) { markers_->setPosition(value); });
  connect(&player, &PlayVideoAction::timeLabelChanged, time_, &QLabel::setText);
  connect(markers_, &TrimMarkers::positionPressed, this,
          [this](bool pressed) { controller_.player().setIsDragSlider(pressed); });
  connect(markers_, &TrimMarkers::positionMoved, this,
          [this](double seconds) { controller_.player().playSlideChange(seconds); });
  connect(play_, &QToolButton::clicked, this, [this] {
    controller_.playButtonClick();
    paused_ = false;
    updateButtons(controller_.player().isPlaying());
  });
  connect(pause_, &QToolButton::clicked, this, [this] {
    controller_.pauseButtonClick();
    paused_ = true;
    updateButtons(true);
  });
  connect(stop_, &QToolButton::clicked, &controller_, &TrimFormController::stopButtonClick);
  connect(markIn, &QToolButton::clicked, &controller_, &TrimFormController::trimButtonGoLeft);
  connect(markOut, &QToolButton::clicked, &controller_, &TrimFormController::trimButtonGoRight);
  connect(playTrim, &QToolButton::clicked, this, [this] {
    controller_.playTrimingMovies();
    paused_ = false;
    updateButtons(controller_.player().isPlaying());
  });
  connect(addSegment, &QPushButton::clicked, &controller_, &TrimFormController::addSegment);
  connect(deleteSegment, &QPushButton::clicked, &controller_, &TrimFormController::deleteSegment);
  connect(merge_, &QCheckBox::toggled, &controller_, &TrimFormController::setMergeChecked);
  connect(done, &QPushButton::clicked, &controller_, &TrimFormController::doneButtonClick);
  connect(cancel, &QPushButton::clicked, &controller_, &TrimFormController::cancelButtonClick);

  connect(&controller_, &TrimFormController::markersChanged, this, &TrimDialog::showMarkers);
  connect(&controller_, &TrimFormController::steppersChanged, this, &TrimDialog::showSteppers);
  connect(&controller_, &TrimFormController::selectionChanged, this, &TrimDialog::showSelection);
  connect(&controller_, &TrimFormController::tableChanged, this, [this] { showSelection(controller_.selectedRow()); });
  connect(&controller_, &TrimFormController::playingChanged, this, [this](bool playing) {
    paused_ = false;
    if (!playing) view_->clearPicture();
    updateButtons(playing);
  });
  connect(&controller_, &TrimFormController::windowClosed, this, &QDialog::accept);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
    if (!showing_ && current.isValid()) controller_.tableViewSelectDidChange(current.row());
  });
  connect(strip_, &ItemStrip::itemChosen, this, [this](const NodeInfo::Ptr& item) {
    controller_.itemViewClick(item);
    showing_ = true;
    merge_->setChecked(controller_.isMergeChecked());
    showing_ = false;
    showFileRange();
  });

  connect(view_, &PreviewView::playPauseRequested, this, &TrimDialog::togglePlaying);
  connect(view_, &PreviewView::frameStepRequested, this, [this](int direction) {
    controller_.player().stepPicture(direction);
    paused_ = true;
    updateButtons(controller_.player().isPlaying());
  });
  connect(view_, &PreviewView::secondStepRequested, this, [this](int direction) {
    controller_.player().stepSecond(direction);
    paused_ = true;
    updateButtons(controller_.player().isPlaying());
  });
  connect(view_, &PreviewView::startRequested, this, [this] { controller_.player().goToStart(); });
  connect(view_, &PreviewView::endRequested, this, [this] { controller_.player().goToEnd(); });
  addShortcut(Qt::Key_I, [this] { controller_.trimButtonGoLeft(); });
  addShortcut(Qt::Key_O, [this] { controller_.trimButtonGoRight(); });
  addShortcut(Qt::Key_J, [this] { controller_.player().stepSecond(-1); });
  addShortcut(Qt::Key_K, [this] {
    controller_.pauseButtonClick();
    paused_ = true;
    updateButtons(controller_.player().isPlaying());
  });
  addShortcut(Qt::Key_L, [this] {
    controller_.playButtonClick();
    paused_ = false;
    updateButtons(controller_.player().isPlaying());
  });
  addShortcut(Qt::Key_Delete, [this] { controller_.deleteSegment(); });

  player.setVideoView({view_->renderView(), kPreviewSize.width(), kPreviewSize.height()});
  controller_.showWindowModal(items, node);
  showing_ = true;
  strip_->showItem(controller_.nodeInfo());
  merge_->setChecked(controller_.isMergeChecked());
  showing_ = false;
  showFileRange();
  showMarkers();
  showSteppers();
  showSelection(controller_.selectedRow());
  view_->setFocus();
}

// The renderer hands pictures and sound to the view until it is stopped.
TrimDialog::~TrimDialog() { controller_.player().stopPlay(); }

QToolButton* TrimDialog::addButton(const QString& text, const QString& toolTip) {
  auto* button = new QToolButton(this);
  button->setText(text);
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  return button;
}

QWidget* TrimDialog::makeStepper(bool isStart) {
  auto* box = new QWidget(this);
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new QLabel(isStart ? tr("Start:") : tr("End:"), box));
  QToolButton* down =
      addButton(QStringLiteral("-"), isStart ? tr("Start one second earlier") : tr("End one second earlier"));
  auto* text = new QLabel(box);
  text->setFont(QFont(QStringLiteral("monospace")));
  QToolButton* up = addButton(QStringLiteral("+"), isStart ? tr("Start one second later") : tr("End one second later"));
  QToolButton* ok = addButton(tr("OK"), isStart ? tr("Set the start") : tr("Set the end"));
  for (QWidget* part : {static_cast<QWidget*>(down), static_cast<QWidget*>(text), static_cast<QWidget*>(up),
                        static_cast<QWidget*>(ok)}) {
    row->addWidget(part);
  }
  (isStart ? startText_ : endText_) = text;
  connect(down, &QToolButton::clicked, this,
          [this, isStart] { isStart ? controller_.stepStart(-1) : controller_.stepEnd(-1); });
  connect(up, &QToolButton::clicked, this,
          [this, isStart] { isStart ? controller_.stepStart(1) : controller_.stepEnd(1); });
  connect(ok, &QToolButton::clicked, this,
          [this, isStart] { isStart ? controller_.trimStartOKButtonClick() : controller_.trimEndOKButtonClick(); });
  return box;
}

void TrimDialog::addShortcut(int key, const std::function<void()>& action) {
  auto* shortcut = new QShortcut(QKeySequence(key), this);
  connect(shortcut, &QShortcut::activated, this, action);
}

void TrimDialog::showFileRange() {
  markers_->setMaximum(controller_.markerMaximum());
  markers_->setKeyframes(controller_.keyframeTimes());
}

void TrimDialog::showMarkers() { markers_->setMarkers(controller_.leftMarker(), controller_.rightMarker()); }

void TrimDialog::showSteppers() {
  startText_->setText(controller_.startStepperText());
  endText_->setText(controller_.endStepperText());
}

void TrimDialog::showSelection(int row) {
  if (row < 0 || row >= model_->rowCount()) return;
  showing_ = true;
  table_->selectRow(row);
  showing_ = false;
}

void TrimDialog::updateButtons(bool playing) {
  play_->setEnabled(!playing || paused_);
  pause_->setEnabled(playing && !paused_);
  stop_->setEnabled(playing);
}

void TrimDialog::togglePlaying() {
  if (controller_.player().isPlaying() && !paused_) {
    controller_.pauseButtonClick();
    paused_ = true;
  } else {
    controller_.playButtonClick();
    paused_ = false;
  }
  updateButtons(controller_.player().isPlaying());
}

void TrimDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space) {
    togglePlaying();
    return;
  }
  QDialog::keyPressEvent(event);
}

void TrimDialog::reject() {
  if (controller_.windowShouldClose()) QDialog::reject();
}
