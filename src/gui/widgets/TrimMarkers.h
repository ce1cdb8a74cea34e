// The play slider of the trim window with its in and out markers. Clicking
// or dragging the track moves the play position; dragging a marker moves it,
// kept before (or after) the other one, and posts "StartTimeChange" or
// "EndTimeChange" with its seconds, as the trim logic listens for. The
// file's keyframes are drawn as ticks under the track: a cut there is exact
// even when the output copies the stream.
#pragma once

#include <QVector>
#include <QWidget>

class TrimMarkers : public QWidget {
  Q_OBJECT

 public:
  explicit TrimMarkers(QWidget* parent = nullptr);

  // Seconds.
  void setMaximum(double seconds);
  void setPosition(double seconds);
  void setMarkers(double in, double out);
  void setKeyframes(const QVector<double>& seconds);
  double maximum() const { return maximum_; }
  double position() const { return position_; }
  double in() const { return in_; }
  double out() const { return out_; }

  QSize sizeHint() const override { return {400, 36}; }
  QSize minimumSizeHint() const override { return {120, 36}; }

 signals:
  // The user moved the play position.
  void positionMoved(double seconds);
  void positionPressed(bool pressed);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  enum class Grab { kNone, kPosition, kIn, kOut };
  QRectF track() const;
  double secondsAt(double x) const;
  double xOf(double seconds) const;
  void moveGrabbed(double x);

  double maximum_ = 0;
  double position_ = 0;
  double in_ = 0;
  double out_ = 0;
  QVector<double> keyframes_;
  Grab grab_ = Grab::kNone;
};
