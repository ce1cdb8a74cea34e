// The watermark tab's logic: the type, the opacity, the picture, the text
// with its font, style and colour, and copying the watermark to every other
// item at the same relative place. Every change redraws the preview.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

#include "Action/EffectFormAction.h"
#include "CommonClass/CommonClass.h"
#include "ValueObject/NodeInfo.h"

class WatermarkEditing {
 public:
  // The picture files the open panel offers.
  static const QStringList& pictureExtensions();
  // Style bit the font panel reports for an upright face.
  static constexpr int32_t kUnitalicTrait = 0x01000000;

  // `effects` redraws the preview; not owned.
  explicit WatermarkEditing(EffectFormAction& effects) : effects_(effects) {}

  void setNodeInfo(const NodeInfo::Ptr& node) { nodeInfo_ = node; }

  // The controls from the node: text, opacity, type and what each type enables.
  void initWatermarkDisplay();
  void changeWatermarkType(int row);
  void changeWatermarkTrans(double percent);
  // A picture the user chose that loads as an image; a fresh picture
  // rectangle is a quarter of the frame.
  void selectWatermarkImage(const QString& path);
  // Each keystroke: the text, and a quarter-frame rectangle when it has none.
  void controlTextDidChange(const QString& text);
  // What the font panel reports: the face, and the text attributes.
  void changeFont(const QString& name, double pointSize, bool bold, bool italic, int32_t traits = 0);
  void changeAttributes(bool underline, bool strikethrough, const std::optional<RGBAColor>& color);
  // The colour to show for m_fontcolor.
  RGBAColor fontColor() const;
  // Gives every item of `items` but the current one a copy of the watermark,
  // placed at the same place relative to its own crop rectangle.
  void applyWatermarkToAll(const NodeInfo::List& items);

  const QString& text() const { return text_; }
  double transparency() const { return transparency_; }
  const QString& transparencyLabel() const { return transparencyLabel_; }
  int typeRow() const { return typeRow_; }
  bool isTextEnabled() const { return textEnabled_; }
  bool isTransparencyEnabled() const { return transparencyEnabled_; }
  bool isTextStyleEnabled() const { return textStyleEnabled_; }
  bool isPictureEnabled() const { return pictureEnabled_; }

 private:
  void setEnabled(bool text, bool transparency, bool textStyle, bool picture);

  EffectFormAction& effects_;
  NodeInfo::Ptr nodeInfo_;
  QString text_;
  double transparency_ = 0;
  QString transparencyLabel_;
  int typeRow_ = 0;
  bool textEnabled_ = false;
  bool transparencyEnabled_ = false;
  bool textStyleEnabled_ = false;
  bool pictureEnabled_ = false;
};
