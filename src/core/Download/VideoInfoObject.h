// One download task, one per line of the download list: the page address the
// user gave, what the last analysis found and chose, and the download's
// state. A null QString stands for a value that is not set.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QString>

#include <array>
#include <memory>

#include "Download/DownloadVideoInfo.h"

// The User-Agent strings of downloads; only the first is used, as every new
// task's userAgent and as the fixed User-Agent of downloads.
inline constexpr std::array<const char*, 4> kDownloadUserAgents{
    "Mozilla/5.0 (Windows NT 6.1; WOW64) AppleWebKit/537.36 (KHTML, like Gecko) Chrome/30.0.1599.101 Safari/537.36",
    "Mozilla/5.0 (compatible; MSIE 9.0; Windows NT 6.1; WOW64; Trident/5.0)",
    "Mozilla/5.0 (X11; Linux x86_64; rv:10.0) Gecko/20100101 Firefox/10.0 (Chrome)",
    "Mozilla/5.0 (Windows NT 6.1; WOW64; rv:11.0) Gecko/20100101 Firefox/11.0",
};

// Download state codes (videoDownState).
enum VideoDownState : qint64 {
  kVideoDownStateAnalysing = 1,    // being analysed, or waiting for it
  kVideoDownStateDownloading = 2,  // downloading, also while paused
  kVideoDownStateFinished = 3,
  kVideoDownStateFailed = 4,   // the analysis found nothing, or the download failed
  kVideoDownStateWaiting = 6,  // waiting for a free download slot
};

class VideoInfoObject {
 public:
  // Page address as the user gave it.
  const QString& htmUrlStr() const { return htmUrlStr_; }
  void setHtmUrlStr(const QString& address) { htmUrlStr_ = address; }
  // Direct address of the chosen file; not set until an analysis chose one.
  const QString& downURLStr() const { return downURLStr_; }
  void setDownURLStr(const QString& address) { downURLStr_ = address; }
  const QString& titleStr() const { return titleStr_; }
  void setTitleStr(const QString& title) { titleStr_ = title; }
  // Thumbnail address of the chosen file, and the picture fetched from it.
  const QString& imageUrl() const { return imageUrl_; }
  void setImageUrl(const QString& address) { imageUrl_ = address; }
  const QByteArray& imageData() const { return imageData_; }
  void setImageData(const QByteArray& data) { imageData_ = data; }
  // Duration: first the decimal number of seconds, then the text shown.
  const QString& videoTime() const { return videoTime_; }
  void setVideoTime(const QString& time) { videoTime_ = time; }
  // Extension of the chosen file, as the analysis gave it.
  const QString& videoFormat() const { return videoFormat_; }
  void setVideoFormat(const QString& format) { videoFormat_ = format; }
  // "??? MB" or "%.2f MB".
  const QString& strVideoSize() const { return strVideoSize_; }
  void setStrVideoSize(const QString& size) { strVideoSize_ = size; }
  qint64 videoDownState() const { return videoDownState_; }
  void setVideoDownState(qint64 state) { videoDownState_ = state; }
  // Thumbnail as read back from the download list file.
  const QByteArray& blogData() const { return blogData_; }
  void setBlogData(const QByteArray& data) { blogData_ = data; }
  // Sent when probing file sizes.
  const QString& userAgent() const { return userAgent_; }
  void setUserAgent(const QString& userAgent) { userAgent_ = userAgent; }
  // Full path of the downloaded file.
  const QString& savePath() const { return savePath_; }
  void setSavePath(const QString& path) { savePath_ = path; }
  // Files found by the last analysis, and the index of the chosen one (-1: none).
  const QList<DownloadVideoInfo>& arrFileList() const { return arrFileList_; }
  void setArrFileList(const QList<DownloadVideoInfo>& files) { arrFileList_ = files; }
  qint64 selectFileIndex() const { return selectFileIndex_; }
  void setSelectFileIndex(qint64 index) { selectFileIndex_ = index; }

 private:
  QString htmUrlStr_;
  QString downURLStr_;
  QString titleStr_;
  QString imageUrl_;
  QByteArray imageData_;
  QString videoTime_;
  QString videoFormat_;
  QString strVideoSize_;
  qint64 videoDownState_ = kVideoDownStateAnalysing;
  QByteArray blogData_;
  QString userAgent_ = QString::fromLatin1(kDownloadUserAgents[0]);
  QString savePath_;
  QList<DownloadVideoInfo> arrFileList_;
  qint64 selectFileIndex_ = -1;
};

// Tasks travel in notifications ("postId") as shared pointers.
Q_DECLARE_METATYPE(std::shared_ptr<VideoInfoObject>)
