#include "EditorDialog.h"

#include <QButtonGroup>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "Action/NodeInfoAction.h"
#include "CommonClass/PlatformServices.h"
#include "sound/PreviewSound.h"
#include "widgets/PreviewView.h"
#include "widgets/ItemStrip.h"

namespace {

using Margin = CropFormAction::Margin;
using SliderId = EffectFormAction::SliderId;

// The size each preview starts in; pictures are drawn scaled to the view afterwards.
constexpr QSize kPreviewSize(360, 240);
// The position slider counts milliseconds; the player speaks seconds.
constexpr double kSliderSteps = 1000.0;

template <size_t N>
QComboBox* choiceBox(QWidget* parent, const std::array<ValueChoice, N>& choices) {
  auto* box = new QComboBox(parent);
  for (const ValueChoice& choice : choices) box->addItem(QObject::tr(choice.label));
  return box;
}

}  // namespace

EditorDialog::EditorDialog(MainFormController& main, const NodeInfo::Ptr& node, int openModel, QWidget* parent)
    : QDialog(parent) {
  setWindowTitle(tr("Edit"));
  setModal(true);
  controller_.setDelegate(&main);
  controller_.setOpenModel(openModel);
  main.setIsShowWindow(true);
  const NodeInfo::List items = NodeInfoAction::getSuitableNode(main.db());

  strip_ = new ItemStrip(items, this);

  sound_ = new PreviewSound(this);
  source_ = new PreviewView(this);
  source_->setSound(sound_);
  result_ = new PreviewView(this);
  for (PreviewView* view : {source_, result_}) {
    view->setMinimumSize(kPreviewSize);
    view->resize(kPreviewSize);
    view->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }
  source_->setAccessibleName(tr("Source"));
  result_->setAccessibleName(tr("Result"));
  auto* views = new QGridLayout;
  views->addWidget(new QLabel(tr("Original"), this), 0, 0, Qt::AlignHCenter);
  views->addWidget(new QLabel(tr("Output preview"), this), 0, 1, Qt::AlignHCenter);
  views->addWidget(source_, 1, 0);
  views->addWidget(result_, 1, 1);

  QToolButton* play = addToolButton(this, tr("Play"), tr("Play"));
  QToolButton* pause = addToolButton(this, tr("Pause"), tr("Pause"));
  QToolButton* stop = addToolButton(this, tr("Stop"), tr("Stop"));
  position_ = new QSlider(Qt::Horizontal, this);
  position_->setAccessibleName(tr("Position"));
  time_ = new QLabel(QLatin1String(PlayVideoAction::kStoppedLabel), this);
  time_->setFont(QFont(QStringLiteral("monospace")));
  auto* transport = new QHBoxLayout;
  for (QToolButton* button : {play, pause, stop}) transport->addWidget(button);
  transport->addWidget(position_, 1);
  transport->addWidget(time_);

  tabs_ = new QTabWidget(this);
  tabs_->addTab(cropTab(), tr("Crop"));
  tabs_->addTab(effectTab(), tr("Effect"));
  tabs_->addTab(audioTab(), tr("Audio"));
  tabs_->addTab(transTab(), tr("Fade"));
  tabs_->addTab(threeDTab(), tr("3D"));
  tabs_->addTab(watermarkTab(), tr("Watermark"));

  auto* resetAll = new QPushButton(tr("Reset all"), this);
  auto* done = new QPushButton(tr("Done"), this);
  auto* cancel = new QPushButton(tr("Cancel"), this);
  // Return confirms a margin field or the watermark text; it never closes the window.
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(resetAll);
  buttons->addStretch();
  buttons->addWidget(done);
  buttons->addWidget(cancel);

  auto* centre = new QVBoxLayout;
  centre->addLayout(views, 1);
  centre->addLayout(transport);
  centre->addWidget(tabs_);
  centre->addLayout(buttons);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(strip_);
  layout->addLayout(centre, 1);

  PlayVideoAction& player = controller_.player();
  connect(&player, &PlayVideoAction::sliderChanged, this, [this](double minimum, double value, double maximum) {
    position_->setRange(static_cast<int>(minimum * kSliderSteps), static_cast<int>(maximum * kSliderSteps));
    if (!position_->isSliderDown()) position_->setValue(static_cast<int>(value * kSliderSteps));
  });
  connect(&player, &PlayVideoAction::timeLabelChanged, time_, &QLabel::setText);
  connect(position_, &QSlider::sliderPressed, this, [this] { controller_.player().setIsDragSlider(true); });
  connect(position_, &QSlider::sliderMoved, this,
          [this](int value) { controller_.player().playSlideChange(value / kSliderSteps); });
  connect(position_, &QSlider::sliderReleased, this, [this] {
    controller_.player().playSlideChange(position_->value() / kSliderSteps);
    controller_.player().setIsDragSlider(false);
  });
  connect(play, &QToolButton::clicked, &controller_, &EditFormController::effectPlay);
  connect(pause, &QToolButton::clicked, &controller_, &EditFormController::effectPause);
  connect(stop, &QToolButton::clicked, &controller_, &EditFormController::effectStop);
  for (PreviewView* view : {source_, result_}) {
    connect(view, &PreviewView::playPauseRequested, this,
            [this] { controller_.player().isPlaying() ? controller_.effectPause() : controller_.effectPlay(); });
    connect(view, &PreviewView::frameStepRequested, this,
            [this](int direction) { controller_.player().stepPicture(direction); });
    connect(view, &PreviewView::secondStepRequested, this,
            [this](int direction) { controller_.player().stepSecond(direction); });
  }
  connect(resetAll, &QPushButton::clicked, &controller_, &EditFormController::editReset);
  connect(done, &QPushButton::clicked, &controller_, &EditFormController::effectOk);
  connect(cancel, &QPushButton::clicked, &controller_, &EditFormController::effectCancel);
  connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) {
    if (!showing_) controller_.selectTab(EditFormController::Tab(index));
    showTab(controller_.selectedTab());
  });
  connect(&controller_, &EditFormController::tabChanged, this, &EditorDialog::showTab);
  connect(&controller_, &EditFormController::formChanged, this, &EditorDialog::showForm);
  connect(&controller_, &EditFormController::playingChanged, this, [this](bool playing) {
    if (playing) return;
    source_->clearPicture();
    result_->clearPicture();
  });
  connect(&controller_, &EditFormController::windowClosed, this, &QDialog::accept);
  connect(strip_, &ItemStrip::itemChosen, &controller_, &EditFormController::itemViewClick);

  player.setVideoView({source_->renderView(), kPreviewSize.width(), kPreviewSize.height()});
  player.setEffectView({result_->renderView(), kPreviewSize.width(), kPreviewSize.height()});
  controller_.showWindowModal(items, node);
  strip_->showItem(controller_.currentNode());
  showForm();
  showTab(controller_.selectedTab());
}

// The renderer hands pictures and sound to the views until it is stopped.
EditorDialog::~EditorDialog() { controller_.player().stopPlay(); }

QToolButton* EditorDialog::addToolButton(QWidget* parent, const QString& text, const QString& toolTip) {
  auto* button = new QToolButton(parent);
  button->setText(text);
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  return button;
}

QPushButton* EditorDialog::addResetButton(QWidget* tab, const QString& toolTip, void (EditFormController::*reset)()) {
  auto* button = new QPushButton(tr("Reset"), tab);
  button->setToolTip(toolTip);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(button, &QPushButton::clicked, &controller_, reset);
  return button;
}

QSlider* EditorDialog::addSlider(QWidget* tab, QFormLayout* form, const QString& label, SliderId id) {
  auto* slider = new QSlider(Qt::Horizontal, tab);
  const SettingRange& range = EffectFormAction::rangeOf(id);
  slider->setRange(range.minimum, range.maximum);
  slider->setAccessibleName(label);
  sliders_[id] = slider;
  connect(slider, &QSlider::valueChanged, this, [this, id](int value) {
    if (!showing_) controller_.setSlider(id, value);
  });
  auto* row = new QHBoxLayout;
  row->addWidget(slider, 1);
  if (id >= SliderId::kFadeIn) {
    sliderLabels_[id] = new QLabel(tab);
    sliderLabels_[id]->setMinimumWidth(110);
    row->addWidget(sliderLabels_[id]);
  }
  form->addRow(label, row);
  return slider;
}

QWidget* EditorDialog::cropTab() {
  auto* tab = new QWidget(this);
  auto* grid = new QGridLayout(tab);
  const std::array<QString, CropFormAction::kMarginCount> names = {tr("Top:"), tr("Bottom:"), tr("Left:"),
                                                                   tr("Right:")};
  for (int which = 0; which < CropFormAction::kMarginCount; ++which) {
    const auto margin = Margin(which);
    auto* field = new QLineEdit(tab);
    field->setValidator(new QIntValidator(field));
    field->setMaximumWidth(70);
    field->setAccessibleName(names[which]);
    margins_[which] = field;
    QToolButton* less = addToolButton(tab, QStringLiteral("-"), tr("Smaller margin"));
    QToolButton* more = addToolButton(tab, QStringLiteral("+"), tr("Larger margin"));
    connect(field, &QLineEdit::editingFinished, this, [this, margin, field] {
      if (!showing_) controller_.cropTextDidEndEditing(margin, field->text());
    });
    connect(less, &QToolButton::clicked, this,
            [this, margin] { controller_.cropStepperClick(margin, controller_.crop().stepper(margin).value - 1); });
    connect(more, &QToolButton::clicked, this,
            [this, margin] { controller_.cropStepperClick(margin, controller_.crop().stepper(margin).value + 1); });
    const int row = which / 2;
    const int column = (which % 2) * 4;
    grid->addWidget(new QLabel(names[which], tab), row, column);
    grid->addWidget(field, row, column + 1);
    grid->addWidget(less, row, column + 2);
    grid->addWidget(more, row, column + 3);
  }
  zoom_ = choiceBox(tab, CropSettingInfo::kZoomChoices);
  zoom_->setAccessibleName(tr("Aspect"));
  connect(zoom_, &QComboBox::activated, &controller_, &EditFormController::selectZoom);
  QPushButton* reset = addResetButton(tab, tr("Crop Reset"), &EditFormController::cropReset);
  grid->addWidget(new QLabel(tr("Aspect:"), tab), 2, 0);
  grid->addWidget(zoom_, 2, 1, 1, 3);
  grid->addWidget(reset, 2, 5, 1, 3);

  auto* turns = new QHBoxLayout;
  const std::array<std::pair<QString, void (EditFormController::*)()>, 4> buttons = {{
      {tr("Rotate left"), &EditFormController::rotate1ButtonClick},
      {tr("Rotate right"), &EditFormController::rotate2ButtonClick},
      {tr("Flip vertical"), &EditFormController::setVertfilpFilm},
      {tr("Flip horizontal"), &EditFormController::setHoriflipFilm},
  }};
  for (const auto& [toolTip, action] : buttons) {
    QToolButton* button = addToolButton(tab, toolTip, toolTip);
    connect(button, &QToolButton::clicked, &controller_, action);
    turns_.append(button);
    turns->addWidget(button);
  }
  turns->addStretch();
  grid->addLayout(turns, 3, 0, 1, 8);
  grid->setColumnStretch(8, 1);
  return tab;
}

QWidget* EditorDialog::effectTab() {
  auto* tab = new QWidget(this);
  auto* form = new QFormLayout(tab);
  effect_ = choiceBox(tab, EffectSettingInfo::kEffectChoices);
  connect(effect_, &QComboBox::activated, &controller_, &EditFormController::selectEffect);
  form->addRow(tr("Effect:"), effect_);
  addSlider(tab, form, tr("Brightness:"), SliderId::kBrightness);
  addSlider(tab, form, tr("Contrast:"), SliderId::kContrast);
  addSlider(tab, form, tr("Saturation:"), SliderId::kSaturation);
  form->addRow(QString(), addResetButton(tab, tr("Effect Reset"), &EditFormController::effectReset));
  return tab;
}

QWidget* EditorDialog::audioTab() {
  auto* tab = new QWidget(this);
  auto* form = new QFormLayout(tab);
  addSlider(tab, form, tr("Volume:"), SliderId::kVolume);
  addSlider(tab, form, tr("Fade in:"), SliderId::kFadeIn);
  addSlider(tab, form, tr("Fade out:"), SliderId::kFadeOut);
  form->addRow(QString(), addResetButton(tab, tr("Audio Reset"), &EditFormController::audioReset));
  return tab;
}

QWidget* EditorDialog::transTab() {
  auto* tab = new QWidget(this);
  auto* form = new QFormLayout(tab);
  addSlider(tab, form, tr("Fade in:"), SliderId::kVideoFadeIn);
  addSlider(tab, form, tr("Fade out:"), SliderId::kVideoFadeOut);
  form->addRow(QString(), addResetButton(tab, tr("Fade Reset"), &EditFormController::transReset));
  return tab;
}

QWidget* EditorDialog::threeDTab() {
  auto* tab = new QWidget(this);
  auto* form = new QFormLayout(tab);
  model3D_ = choiceBox(tab, EffectSettingInfo::kModelOf3DChoices);
  connect(model3D_, &QComboBox::activated, &controller_, &EditFormController::select3DModel);
  form->addRow(tr("3D:"), model3D_);
  addSlider(tab, form, tr("Depth:"), SliderId::kDepth);
  form->addRow(QString(), addResetButton(tab, tr("3D Reset"), &EditFormController::reset3DEffect));
  return tab;
}

QWidget* EditorDialog::watermarkTab() {
  auto* tab = new QWidget(this);
  auto* form = new QFormLayout(tab);
  watermarkType_ = new QButtonGroup(tab);
  auto* types = new QHBoxLayout;
  const std::array<QString, 3> typeNames = {tr("None"), tr("Picture"), tr("Text")};
  for (int row = 0; row < 3; ++row) {
    auto* button = new QRadioButton(typeNames[row], tab);
    watermarkType_->addButton(button, row);
    types->addWidget(button);
  }
  types->addStretch();
  connect(watermarkType_, &QButtonGroup::idClicked, &controller_, &EditFormController::changeWatermarkType);
  form->addRow(tr("Watermark:"), types);

  opacity_ = new QSlider(Qt::Horizontal, tab);
  opacity_->setRange(WatermarkInfo::kTransparencyRange.minimum, WatermarkInfo::kTransparencyRange.maximum);
  opacity_->setAccessibleName(tr("Opacity"));
  opacityLabel_ = new QLabel(tab);
  opacityLabel_->setMinimumWidth(40);
  connect(opacity_, &QSlider::valueChanged, this, [this](int value) {
    if (!showing_) controller_.changeWatermarkTrans(value);
  });
  auto* opacityRow = new QHBoxLayout;
  opacityRow->addWidget(opacity_, 1);
  opacityRow->addWidget(opacityLabel_);
  form->addRow(tr("Opacity:"), opacityRow);

  addImage_ = new QPushButton(tr("Add Image..."), tab);
  addImage_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(addImage_, &QPushButton::clicked, this, &EditorDialog::chooseWatermarkPicture);
  form->addRow(tr("Picture:"), addImage_);
  watermarkText_ = new QLineEdit(tab);
  watermarkText_->setAccessibleName(tr("Watermark text"));
  connect(watermarkText_, &QLineEdit::textEdited, &controller_, &EditFormController::controlTextDidChange);
  textStyle_ = new QPushButton(tr("Text Style..."), tab);
  connect(textStyle_, &QPushButton::clicked, this, &EditorDialog::chooseFont);
  auto* textRow = new QHBoxLayout;
  textRow->addWidget(watermarkText_, 1);
  textRow->addWidget(textStyle_);
  form->addRow(tr("Text:"), textRow);
  auto* applyToAll = new QPushButton(tr("Apply to All"), tab);
  applyToAll->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(applyToAll, &QPushButton::clicked, &controller_, &EditFormController::applyWatermarkToAll);
  form->addRow(QString(), applyToAll);
  return tab;
}

void EditorDialog::chooseWatermarkPicture() {
  FilePanels* panels = PlatformServices::panels();
  if (panels == nullptr) return;
  const QString path = panels->openSingleFile(WatermarkEditing::pictureExtensions());
  // A file that does not load as a picture changes nothing.
  if (!path.isEmpty() && QImageReader(path).canRead()) controller_.selectWatermarkImage(path);
}

void EditorDialog::chooseFont() {
  const NodeInfo::Ptr node = controller_.currentNode();
  if (node == nullptr) return;
  const WatermarkInfo& watermark = node->watermarkInfo();
  QFont current(watermark.m_fontname(), watermark.m_fontsize());
  current.setBold((watermark.m_fontstyle() & WatermarkInfo::kStyleBold) != 0);
  current.setItalic((watermark.m_fontstyle() & WatermarkInfo::kStyleItalic) != 0);
  current.setUnderline((watermark.m_fontstyle() & WatermarkInfo::kStyleUnderline) != 0);
  current.setStrikeOut((watermark.m_fontstyle() & WatermarkInfo::kStyleStrikethrough) != 0);
  bool chosen = false;
  const QFont font = QFontDialog::getFont(&chosen, current, this, tr("Text Style"));
  if (!chosen) return;
  controller_.changeFont(font.family(), font.pointSizeF(), font.bold(), font.italic());
  const RGBAColor shown = controller_.watermark().fontColor();
  const QColor color =
      QColorDialog::getColor(QColor::fromRgbF(shown.red, shown.green, shown.blue), this, tr("Text Colour"));
  std::optional<RGBAColor> picked;
  if (color.isValid()) picked = RGBAColor{color.redF(), color.greenF(), color.blueF(), 1.0};
  controller_.changeAttributes(font.underline(), font.strikeOut(), picked ? picked : shown);
}

void EditorDialog::showForm() {
  showing_ = true;
  const CropFormAction& crop = controller_.crop();
  for (int which = 0; which < CropFormAction::kMarginCount; ++which) {
    margins_[which]->setText(crop.marginText(Margin(which)));
  }
  zoom_->setCurrentIndex(crop.zoomIndex());
  const EffectFormAction& effects = controller_.effects();
  for (int id = 0; id < EffectFormAction::kSliderCount; ++id) {
    const EffectFormAction::Slider& slider = effects.slider(SliderId(id));
    sliders_[id]->setValue(static_cast<int>(slider.value));
    sliders_[id]->setEnabled(slider.enabled);
    if (sliderLabels_[id] != nullptr) sliderLabels_[id]->setText(slider.label);
  }
  effect_->setCurrentIndex(effects.effectIndex());
  model3D_->setCurrentIndex(effects.model3DIndex());
  const WatermarkEditing& watermark = controller_.watermark();
  if (QAbstractButton* type = watermarkType_->button(watermark.typeRow())) type->setChecked(true);
  opacity_->setValue(static_cast<int>(watermark.transparency()));
  opacity_->setEnabled(watermark.isTransparencyEnabled());
  opacityLabel_->setText(watermark.transparencyLabel());
  addImage_->setEnabled(watermark.isPictureEnabled());
  if (watermarkText_->text() != watermark.text()) watermarkText_->setText(watermark.text());
  watermarkText_->setEnabled(watermark.isTextEnabled());
  textStyle_->setEnabled(watermark.isTextStyleEnabled());
  for (int tab = 0; tab < EditFormController::kTabCount; ++tab) {
    tabs_->setTabEnabled(tab, controller_.isTabEnabled(EditFormController::Tab(tab)));
  }
  for (QToolButton* turn : turns_) turn->setEnabled(controller_.areTurnsEnabled());
  tabs_->setCurrentIndex(controller_.selectedTab());
  showing_ = false;
}

void EditorDialog::showTab(EditFormController::Tab tab) {
  const bool wasShowing = showing_;
  showing_ = true;
  tabs_->setCurrentIndex(tab);
  showing_ = wasShowing;
  source_->setCropEditing(tab == EditFormController::kTabCrop);
  source_->setWatermarkEditing(tab == EditFormController::kTabWatermark);
}

void EditorDialog::reject() {
  if (controller_.windowShouldClose()) QDialog::reject();
}
