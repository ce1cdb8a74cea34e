// The editor window over EditFormController: the strip of the list's items,
// the source (with its crop and watermark rectangles to drag) and the result
// side by side with play, pause, stop and the position, the six tabs (crop
// and turns, effect, sound, video fades, 3D, watermark), "Reset all", "Done"
// and "Cancel".
#pragma once

#include <QDialog>

#include <array>

#include "Action/EditFormController.h"
#include "Action/MainFormController.h"

class ItemStrip;
class PreviewSound;
class PreviewView;
class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class QTabWidget;
class QToolButton;

class EditorDialog : public QDialog {
  Q_OBJECT

 public:
  // Edits the items of `main`'s list, starting on `node`; `openModel` 0
  // opens on the crop tab (the Effects command), anything else on the 3D tab.
  EditorDialog(MainFormController& main, const NodeInfo::Ptr& node, int openModel = 0, QWidget* parent = nullptr);
  ~EditorDialog() override;

  EditFormController& controller() { return controller_; }

 protected:
  void reject() override;

 private:
  QWidget* cropTab();
  QWidget* effectTab();
  QWidget* audioTab();
  QWidget* transTab();
  QWidget* threeDTab();
  QWidget* watermarkTab();
  // A slider over one effect setting, with its value label when it has one.
  QSlider* addSlider(QWidget* tab, class QFormLayout* form, const QString& label, EffectFormAction::SliderId id);
  QPushButton* addResetButton(QWidget* tab, const QString& toolTip, void (EditFormController::*reset)());
  QToolButton* addToolButton(QWidget* parent, const QString& text, const QString& toolTip);
  void chooseWatermarkPicture();
  void chooseFont();
  void showForm();
  void showTab(EditFormController::Tab tab);

  EditFormController controller_;
  PreviewSound* sound_ = nullptr;
  PreviewView* source_ = nullptr;
  PreviewView* result_ = nullptr;
  QSlider* position_ = nullptr;
  QLabel* time_ = nullptr;
  ItemStrip* strip_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  std::array<QLineEdit*, CropFormAction::kMarginCount> margins_{};
  QComboBox* zoom_ = nullptr;
  QList<QToolButton*> turns_;
  std::array<QSlider*, EffectFormAction::kSliderCount> sliders_{};
  std::array<QLabel*, EffectFormAction::kSliderCount> sliderLabels_{};
  QComboBox* effect_ = nullptr;
  QComboBox* model3D_ = nullptr;
  QButtonGroup* watermarkType_ = nullptr;
  QSlider* opacity_ = nullptr;
  QLabel* opacityLabel_ = nullptr;
  QPushButton* addImage_ = nullptr;
  QLineEdit* watermarkText_ = nullptr;
  QPushButton* textStyle_ = nullptr;
  bool showing_ = false;
};
