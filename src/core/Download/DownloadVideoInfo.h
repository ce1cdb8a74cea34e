// One downloadable file that the analysis of a page found: its address,
// format, frame, length, size, title and thumbnail.
#pragma once

#include <QSizeF>
#include <QString>

class DownloadVideoInfo {
 public:
  // Frame width and height in pixels.
  QSizeF dimension() const { return dimension_; }
  void setDimension(const QSizeF& dimension) { dimension_ = dimension; }
  const QString& downloadUrl() const { return downloadUrl_; }
  void setDownloadUrl(const QString& url) { downloadUrl_ = url; }
  // The file's extension, "mp4" for instance.
  const QString& extention() const { return extention_; }
  void setExtention(const QString& extension) { extention_ = extension; }
  // Duration in seconds.
  qint64 length() const { return length_; }
  void setLength(qint64 seconds) { length_ = seconds; }
  // Size in bytes.
  qint64 videoSize() const { return videoSize_; }
  void setVideoSize(qint64 bytes) { videoSize_ = bytes; }
  const QString& videoTitle() const { return videoTitle_; }
  void setVideoTitle(const QString& title) { videoTitle_ = title; }
  // Thumbnail address.
  const QString& imgURL() const { return imgURL_; }
  void setImgURL(const QString& url) { imgURL_ = url; }

  // The size as a task shows it: "??? MB" up to 2000 bytes (too small to be
  // known), else decimal megabytes as "%.2f MB".
  QString videoSizeText() const;

  bool operator==(const DownloadVideoInfo&) const = default;

 private:
  QSizeF dimension_;
  QString downloadUrl_;
  QString extention_;
  qint64 length_ = 0;
  qint64 videoSize_ = 0;
  QString videoTitle_;
  QString imgURL_;
};
