// The editor window's logic on items read from real files, with the real
// preview playing them: margins and their limits, fit mode, rotation and
// mirrors, effects and their resets as the played records receive them,
// watermarks, rectangles dragged in the preview, and closing.
#include <gtest/gtest.h>

#include <QRect>

#include "Action/EditFormController.h"
#include "Action/NodeInfoAction.h"
#include "CommonClass/NotificationCenter.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "support/ListItems.h"

namespace {

using Margin = CropFormAction::Margin;
using Slider = EffectFormAction::SliderId;

class RecordingEditDelegate : public EditFormDelegate {
 public:
  void editWindowClose(const NodeInfo::Ptr& node) override { closed.append(node); }
  NodeInfo::List closed;
};

class EditorWindow : public testing::Test {
 protected:
  void SetUp() override {
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path(QStringLiteral("engine")));
    controller.setDelegate(&delegate);
    controller.player().setVideoView({nullptr, 160, 120});
    controller.player().setEffectView({nullptr, 160, 120});
  }

  NodeInfo::Ptr item(const QString& name, const QString& size = QStringLiteral("640x480")) {
    return modeltest::addToList(db, {media.clip(name, 2, 1, size)}, media.path(QStringLiteral("scratch"))).front();
  }
  const MediaItem& playedRecord() { return controller.player().player().mediaData(0); }

  testmedia::Folder media;
  UIInfoDB db;
  RecordingEditDelegate delegate;
  EditFormController controller;
};

TEST_F(EditorWindow, MarginsMakeTheRectangleWithinLimitsThatKeep32Pixels) {
  const NodeInfo::Ptr node = item(QStringLiteral("crop.mp4"));
  controller.showWindowModal({node});
  EXPECT_EQ(controller.selectedTab(), EditFormController::kTabCrop);
  const CropFormAction& crop = controller.crop();
  EXPECT_EQ(crop.stepper(CropFormAction::kTop).maximum, 448);
  EXPECT_EQ(crop.stepper(CropFormAction::kRight).maximum, 608);
  EXPECT_EQ(crop.marginText(CropFormAction::kLeft), QStringLiteral("0"));

  controller.cropStepperClick(CropFormAction::kTop, 10);
  controller.cropStepperClick(CropFormAction::kBottom, 20);
  controller.cropStepperClick(CropFormAction::kLeft, 30);
  controller.cropStepperClick(CropFormAction::kRight, 40);
  const CropSettingInfo& stored = node->cropSettingInfo();
  EXPECT_EQ(QRect(stored.x(), stored.y(), stored.w(), stored.h()), QRect(30, 10, 570, 450));
  EXPECT_EQ(+playedRecord().m_cropW, 570);

  // Typed text is checked against the limits but stored only by a stepper or a reset.
  controller.cropTextDidChange(CropFormAction::kTop, QStringLiteral("9999"));
  EXPECT_EQ(crop.marginText(CropFormAction::kTop), QString::number(480 - 20 - 32));
  controller.cropTextDidChange(CropFormAction::kLeft, QStringLiteral("-5"));
  EXPECT_EQ(crop.marginText(CropFormAction::kLeft), QStringLiteral("-5"));
  EXPECT_EQ(crop.stepper(CropFormAction::kLeft).value, 0);
  EXPECT_EQ(stored.y(), 10);
  controller.cropStepperClick(CropFormAction::kRight, 40);
  EXPECT_EQ(QRect(stored.x(), stored.y(), stored.w(), stored.h()), QRect(0, 428, 600, 32));
  // Leaving a field stores what it took; a margin under the minimum counts as 0.
  controller.cropTextDidEndEditing(CropFormAction::kTop, QStringLiteral("100"));
  EXPECT_EQ(QRect(stored.x(), stored.y(), stored.w(), stored.h()), QRect(0, 100, 600, 360));
  EXPECT_EQ(+playedRecord().m_cropY, 100);
  controller.cropTextDidEndEditing(CropFormAction::kTop, QStringLiteral("-3"));
  EXPECT_EQ(stored.y(), 0);

  controller.selectZoom(2);
  EXPECT_EQ(stored.zoom(), 1);  // "16:9"
  controller.cropReset();
  EXPECT_EQ(QRect(stored.x(), stored.y(), stored.w(), stored.h()), QRect(0, 0, 640, 480));
  EXPECT_EQ(stored.zoom(), 0);
  EXPECT_EQ(crop.zoomIndex(), 0);
  EXPECT_EQ(crop.marginText(CropFormAction::kBottom), QStringLiteral("0"));
}

TEST_F(EditorWindow, RotationCountsOnFromItsCounterEvenAfterAReset) {
  const NodeInfo::Ptr node = item(QStringLiteral("turn.mp4"));
  controller.showWindowModal({node});
  QList<int32_t> angles;
  for (int press = 0; press < 3; ++press) {
    controller.rotate2ButtonClick();
    angles.append(node->effectSettingInfo().rotateAngle());
  }
  EXPECT_EQ(angles, QList<int32_t>({270, 180, 90}));
  angles.clear();
  controller.rotate1ButtonClick();  // 180
  controller.effectReset();
  EXPECT_EQ(node->effectSettingInfo().rotateAngle(), 0);
  for (int press = 0; press < 3; ++press) {
    controller.rotate1ButtonClick();
    angles.append(node->effectSettingInfo().rotateAngle());
  }
  EXPECT_EQ(angles, QList<int32_t>({270, 0, 90}));
  EXPECT_EQ(+playedRecord().m_RotateAngle, 90);

  controller.setHoriflipFilm();
  controller.setVertfilpFilm();
  controller.setVertfilpFilm();
  EXPECT_EQ(node->effectSettingInfo().rotateFlipX(), 1);
  EXPECT_EQ(node->effectSettingInfo().rotateFlipY(), 0);
  EXPECT_EQ(+playedRecord().m_RotateFlip_X, 1);
}

TEST_F(EditorWindow, EffectsReachThePlayedRecordAndResetsKeepTheirScope) {
  const NodeInfo::Ptr node = item(QStringLiteral("effects.mp4"));
  controller.setOpenModel(1);
  controller.showWindowModal({node});
  EXPECT_EQ(controller.selectedTab(), EditFormController::kTab3D);
  ASSERT_TRUE(controller.player().isPlaying());
  EXPECT_EQ(+playedRecord().m_volume, 256);
  EXPECT_FALSE(controller.effects().slider(Slider::kDepth).enabled);

  controller.setVolumeZoom(250);
  EXPECT_EQ(controller.effects().slider(Slider::kVolume).label, QStringLiteral("Volume: 250%"));
  EXPECT_EQ(+playedRecord().m_volume, 384);
  controller.setFadeIn(3.7);
  EXPECT_EQ(controller.effects().slider(Slider::kFadeIn).label, QStringLiteral("Fade In: 3 s"));
  EXPECT_EQ(+playedRecord().m_fadeIn_len, 3000000);
  controller.setVideoTransOut(12);  // beyond the range
  EXPECT_EQ(node->effectSettingInfo().videoFadeOut(), 10);

  controller.set3DDepth(-7);  // ignored while 3D is off
  EXPECT_EQ(node->effectSettingInfo().depth(), 5);
  controller.select3DModel(2);
  EXPECT_TRUE(controller.effects().slider(Slider::kDepth).enabled);
  controller.set3DDepth(-7);
  EXPECT_EQ(+playedRecord().m_EffectID[1], 1072);
  EXPECT_EQ(+playedRecord().m_pEffectArgs[1].arg1, -1);
  controller.select3DModel(0);
  EXPECT_EQ(node->effectSettingInfo().depth(), 5);
  EXPECT_EQ(controller.effects().slider(Slider::kDepth).label, QString());

  controller.selectEffect(1);
  controller.setBrightness(40);
  EXPECT_EQ(+playedRecord().m_EffectID[0], 1036);
  controller.cropStepperClick(CropFormAction::kTop, 100);
  controller.editReset();
  const EffectSettingInfo& effect = node->effectSettingInfo();
  EXPECT_EQ(effect.brightness(), 0);
  EXPECT_EQ(effect.effectModel(), 0);
  EXPECT_EQ(node->cropSettingInfo().y(), 0);
  EXPECT_EQ(effect.volume(), 250);
  EXPECT_EQ(effect.fadeIn(), 3);

  controller.audioReset();
  controller.transReset();
  EXPECT_EQ(effect.volume(), 100);
  EXPECT_EQ(controller.effects().slider(Slider::kFadeOut).label, QStringLiteral("Fade Out: 0 s"));
  EXPECT_EQ(effect.videoFadeOut(), 0);
}

TEST_F(EditorWindow, ASoundOnlyFileOpensOnTheSoundTabWithThePictureTabsOff) {
  const QString tone = media.audio(QStringLiteral("tone.m4a"), 2);
  const NodeInfo::Ptr sound = modeltest::addToList(db, {tone}, media.path(QStringLiteral("scratch"))).front();
  const NodeInfo::Ptr picture = item(QStringLiteral("picture.mp4"));
  controller.showWindowModal({picture, sound}, sound);
  EXPECT_EQ(controller.selectedTab(), EditFormController::kTabAudio);
  EXPECT_FALSE(controller.isTabEnabled(EditFormController::kTabCrop));
  EXPECT_FALSE(controller.isTabEnabled(EditFormController::kTabWatermark));
  EXPECT_FALSE(controller.areTurnsEnabled());
  controller.selectTab(EditFormController::kTabEffect);
  EXPECT_EQ(controller.selectedTab(), EditFormController::kTabAudio);
  controller.itemViewClick(picture);
  EXPECT_TRUE(controller.isTabEnabled(EditFormController::kTabCrop));
  EXPECT_EQ(controller.currentNode(), picture);
}

TEST_F(EditorWindow, WatermarkTypeOpacityTextAndApplyToAllByProportion) {
  const NodeInfo::Ptr small = item(QStringLiteral("small.mp4"));
  const NodeInfo::Ptr large = item(QStringLiteral("large.mp4"), QStringLiteral("1280x720"));
  controller.showWindowModal(NodeInfoAction::getSuitableNode(db), large);
  const WatermarkEditing& tab = controller.watermark();
  EXPECT_FALSE(tab.isTransparencyEnabled());

  controller.changeWatermarkType(WatermarkInfo::kTypeText);
  EXPECT_TRUE(tab.isTextEnabled());
  EXPECT_FALSE(tab.isPictureEnabled());
  controller.controlTextDidChange(QStringLiteral("M"));
  const WatermarkInfo& mark = large->watermarkInfo();
  EXPECT_EQ(QRect(mark.m_x(), mark.m_y(), mark.m_w(), mark.m_h()), QRect(0, 0, 320, 180));
  controller.changeWatermarkTrans(100);
  EXPECT_EQ(tab.transparencyLabel(), QStringLiteral("100"));
  EXPECT_EQ(+playedRecord().m_watermarkInfo.m_transparency, 254);
  EXPECT_EQ(+playedRecord().m_watermarkInfo.m_w, 320);
  controller.changeFont(QStringLiteral("Serif"), 30.6, true, true);
  controller.changeAttributes(true, false, RGBAColor{1.0, 0.5, 0.0, 1.0});
  EXPECT_EQ(mark.m_fontsize(), 30);
  EXPECT_EQ(mark.m_fontstyle(),
            WatermarkInfo::kStyleBold | WatermarkInfo::kStyleItalic | WatermarkInfo::kStyleUnderline);
  EXPECT_EQ(mark.m_fontcolor(), 0xFFFF7F00u);
  controller.changeFont(QStringLiteral("Serif"), 30, true, false, WatermarkEditing::kUnitalicTrait);
  EXPECT_EQ(mark.m_fontstyle(), WatermarkInfo::kStyleUnderline);

  controller.itemViewClick(small);
  controller.changeWatermarkType(WatermarkInfo::kTypePicture);
  controller.selectWatermarkImage(media.still(QStringLiteral("mark.png")));
  const WatermarkInfo& smallMark = small->watermarkInfo();
  EXPECT_EQ(QRect(smallMark.m_imgX(), smallMark.m_imgY(), smallMark.m_imgW(), smallMark.m_imgH()),
            QRect(0, 0, 160, 120));
  EXPECT_EQ(+playedRecord().m_watermarkInfo.m_watermarkType, WatermarkInfo::kTypePicture);
  small->watermarkInfo().setM_imgX(64);
  small->watermarkInfo().setM_imgY(48);
  controller.applyWatermarkToAll();
  const WatermarkInfo& copied = large->watermarkInfo();
  EXPECT_EQ(copied.m_watermarkType(), WatermarkInfo::kTypePicture);
  EXPECT_EQ(QRect(copied.m_imgX(), copied.m_imgY(), copied.m_imgW(), copied.m_imgH()), QRect(128, 72, 320, 180));
  EXPECT_EQ(copied.m_text(), QString());  // the copy is the small item's whole watermark
}

TEST_F(EditorWindow, DraggedRectanglesAreReadOnlyWhilePlaying) {
  const NodeInfo::Ptr node = item(QStringLiteral("drag.mp4"));
  int changes = 0;
  controller.showWindowModal({node});
  QObject::connect(&controller, &EditFormController::formChanged, [&] { ++changes; });
  controller.effectPause();
  ASSERT_FALSE(controller.player().getImage().isNull());  // waits for the first picture
  ASSERT_EQ(VideoConverter_Render_DragCrop(16, 8, 320, 240), 0);
  ASSERT_TRUE(waitUntil([&] { return changes > 0; }));
  EXPECT_EQ(node->cropSettingInfo().x(), 16);
  EXPECT_EQ(controller.crop().marginText(CropFormAction::kRight), QString::number(640 - 320 - 16));
  EXPECT_EQ(controller.crop().stepper(CropFormAction::kTop).maximum, 8 + 240 - 32);

  controller.effectStop();
  NotificationCenter::defaultCenter().postNotificationName(QLatin1String(PlayVideo::kReadCropInfo));
  NotificationCenter::defaultCenter().postNotificationName(QLatin1String(PlayVideo::kReadWatermarkInfo));
  EXPECT_EQ(node->cropSettingInfo().x(), 16);
  EXPECT_EQ(node->watermarkInfo().m_imgW(), 0);
}

TEST_F(EditorWindow, DoneStoresAndCancelOnlyClosesBothTellingTheNode) {
  const NodeInfo::Ptr node = item(QStringLiteral("close.mp4"));
  controller.showWindowModal({node});
  controller.cropTextDidChange(CropFormAction::kLeft, QStringLiteral("100"));
  controller.effectOk();
  EXPECT_EQ(node->cropSettingInfo().x(), 100);
  EXPECT_FALSE(controller.isShown());
  EXPECT_FALSE(controller.player().isPlaying());

  controller.showWindowModal({node});
  controller.cropTextDidChange(CropFormAction::kLeft, QStringLiteral("0"));
  controller.setSaturation(-50);
  controller.effectCancel();
  EXPECT_EQ(node->cropSettingInfo().x(), 100);
  EXPECT_EQ(node->effectSettingInfo().saturation(), -50);
  EXPECT_EQ(delegate.closed, NodeInfo::List({node, node}));
}

}  // namespace
