// Where the preview's pictures are drawn. The renderer hands pictures to the
// record behind renderView() on its own threads; the view keeps only the
// newest and draws it scaled to fit, centred on black. Over a source picture
// it can show the crop and watermark rectangles for the user to drag; each
// move goes to the renderer, which writes it into the record it renders and
// tells the window. Keys ask the window's player for play, pause and steps.
// The renderer must be stopped before the view, or its sound, goes.
#pragma once

#include <QImage>
#include <QWidget>

#include <mutex>
#include <optional>

#include "videoconverter.h"
#include "widgets/RectangleDrag.h"

class PreviewSound;

class PreviewView : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewView(QWidget* parent = nullptr);

  // The view record for VideoConverter_Render.
  void* renderView() { return &view_; }
  // Plays the preview's sound through `sound` (not owned); nullptr for a
  // silent view. Set before rendering starts.
  void setSound(PreviewSound* sound);
  // Shown until the first picture arrives, and again after clearPicture().
  void setStill(const QImage& still);
  // Forgets the last picture; call once rendering has stopped.
  void clearPicture();

  void setCropEditing(bool editing);
  void setWatermarkEditing(bool editing);

 signals:
  void playPauseRequested();
  void frameStepRequested(int direction);
  void secondStepRequested(int direction);
  void startRequested();
  void endRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  // A picture and what the renderer said about it; `record.pixels` is unset.
  struct Picture {
    QImage image;
    VideoConverter_Frame record{};
  };
  enum class Target { kCrop, kWatermark };
  struct Grab {
    Target target;
    SourceMapping mapping;
    RectangleDrag drag;
    QRect rectangle;
  };

  static void showFrame(void* context, const VideoConverter_Frame* frame);
  static int playSound(void* context, const int16_t* samples, int frameCount);
  static int64_t soundPlayedUs(void* context);
  static void flushSound(void* context);

  void keepNewest(const VideoConverter_Frame& frame);
  void showNewest();
  SourceMapping mapping() const;
  // The rectangle of `target` in source pixels, when the shown picture lets it be edited.
  std::optional<QRect> editable(Target target) const;
  void setRectangle(Target target, const QRect& rectangle);
  std::optional<Grab> grabAt(const QPointF& point) const;
  void paintRectangle(QPainter& painter, Target target, const SourceMapping& mapping) const;

  VideoConverter_RenderView view_{};
  PreviewSound* sound_ = nullptr;

  // Written by the renderer's threads, taken by the GUI thread.
  std::mutex newestMutex_;
  Picture newest_;
  bool newestWaiting_ = false;

  std::optional<Picture> shown_;
  QImage still_;
  bool cropEditing_ = false;
  bool watermarkEditing_ = false;
  std::optional<Grab> grab_;
};
