// One line of the download list as a model: the task it shows, the analysis
// worker and the download of that task, which of its elements are shown in
// each state, its texts (title, duration, format, size, speed, downloaded
// size), its pictures, and its buttons' commands, which it announces as
// notifications with itself as object. The window draws it; the download
// window controller decides when its download may start.
#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QString>

#include <bitset>
#include <cstdint>
#include <functional>
#include <memory>

#include "Download/GetVideoInfoThread.h"
#include "Download/ItemDownload.h"
#include "Download/VideoInfoObject.h"

class DroglineView;

class DrogItemView : public QObject {
  Q_OBJECT

 public:
  static constexpr int kWidth = 815;
  static constexpr int kHeight = 62;

  static constexpr const char* kFailText = "Sorry! Fail to download.";
  static constexpr const char* kWaitText = "Wait for download.";
  // Posted with the item as object.
  static constexpr const char* kResumeNotification = "resumeURL";
  static constexpr const char* kPauseNotification = "pauseURL";
  static constexpr const char* kReParamNotification = "reParamURL";
  static constexpr const char* kImportNotification = "importToConverter";
  // Skin pictures: the thumbnail while analysing and after a failed start,
  // and the failure and waiting icons.
  static constexpr const char* kAnalysingThumbnail = "blogImage.gif";
  static constexpr const char* kFailedThumbnail = "downFail";
  static constexpr const char* kFailIcon = "failImage";
  static constexpr const char* kWaitIcon = "waitImage";
  // The longest side a thumbnail is kept at; larger pictures are scaled down.
  static constexpr int kThumbnailSide = 160;

  // The elements of a line, each named for the skin "winDownload.list." + its name.
  enum class Element {
    imgvBlog,
    imgvIcon,
    labTitle,
    imgvVideoTime,
    labVideoTime,
    imgvVideoFormat,
    labVideoFormat,
    imgvVideoSize,
    labVideoSize,
    imgvBg,
    imgvHighBg,
    imgvFail,
    labFail,
    imgvWait,
    labWait,
    progressBar,
    labDownloadSpeed,
    labDownloadSize,
    btPause,
    btResume,
    btImportToConverter,
    btOpenFile,
    btReParam,
    btDelete,
  };
  static constexpr int kElementCount = static_cast<int>(Element::btDelete) + 1;
  static QString skinName(Element element);
  // The tool tip of a button; empty for other elements.
  static QString toolTip(Element button);

  // Sent to the target on the main thread, after the end has been shown.
  using FinishAction = std::function<void(DrogItemView*)>;
  using FailAction = std::function<void(DrogItemView*, const QString& reason)>;

  explicit DrogItemView(std::shared_ptr<VideoInfoObject> task = nullptr, QObject* parent = nullptr);
  // Stops the download and the analysis worker.
  ~DrogItemView() override;

  const std::shared_ptr<VideoInfoObject>& itemInfo() const { return itemInfo_; }
  void setItemInfo(const std::shared_ptr<VideoInfoObject>& task) { itemInfo_ = task; }
  // The analysis worker; replacing it stops and releases the one before.
  GetVideoInfoThread* getVideoInfo() const { return getVideoInfo_; }
  void setGetVideoInfo(GetVideoInfoThread* worker);
  // The running download, or none.
  ItemDownload* downloadRequest() const { return downloadRequest_.get(); }
  // The containing list, which deleteItemView() asks; not owned.
  DroglineView* list() const { return list_; }
  void setList(DroglineView* list) { list_ = list; }

  // The state shown, and the command that shows one (codes of VideoDownState).
  int32_t cellState() const { return cellState_; }
  void cellState(int32_t code);

  // What is shown.
  bool isVisible(Element element) const { return visible_.test(static_cast<size_t>(element)); }
  bool isReParamEnabled() const { return reParamEnabled_; }
  bool isProgressIndeterminate() const { return progressIndeterminate_; }
  bool isProgressAnimating() const { return progressAnimating_; }
  double progressValue() const { return progressValue_; }
  const QString& title() const { return title_; }
  const QString& videoTime() const { return videoTime_; }
  const QString& videoFormat() const { return videoFormat_; }
  const QString& videoSize() const { return videoSize_; }
  const QString& downloadSpeed() const { return downloadSpeed_; }
  const QString& downloadSize() const { return downloadSize_; }
  // Path of the site icon.
  const QString& iconImage() const { return iconImage_; }
  // The thumbnail: a picture, or the name of a skin picture; at most one is set.
  const QImage& getBlogImage() const { return blogImage_; }
  const QString& blogSkinImage() const { return blogSkinImage_; }
  // The thumbnail as the list file keeps it; empty when it is no picture.
  const QByteArray& blogImageTiff() const { return blogImageTiff_; }
  bool isSeleted() const { return isSeleted_; }
  // Why the last download failed; empty unless it did.
  const QString& failureReason() const { return failureReason_; }
  double lastBytesReceived() const { return lastBytesReceived_; }

  void setTitle(const QString& title);
  void setVideoTime(const QString& time);
  void setVideoFormat(const QString& format);
  void setVideoSize(const QString& size);
  void setIconImage(const QString& path);
  void setBlogImage(const QImage& image);
  void setBlogSkinImage(const QString& name);
  // Set by the list container only.
  void setSeleted(bool selected);

  // Fills the display from the task: the analysing picture in state 1, else
  // the thumbnail from its blogData; the texts, or " " for those not set.
  void initViewValue();

  // Who hears of the download's end.
  void setTarget(QObject* target) { target_ = target; }
  void setDownloadFinishAction(FinishAction action) { downloadFinishAction_ = std::move(action); }
  void setDownloadFailAction(FailAction action) { downloadFailAction_ = std::move(action); }

  // Starts the task's download into a free name in the download folder, or
  // continues it into the name it has; a task whose address is no address
  // fails at once with the "downFail" thumbnail.
  void initDownloadRequest();
  // Stops the download; the temporary file stays for a later resume.
  void stopDownloadRequest();
  // Speed and downloaded size from the growth of the temporary file since
  // the last call; the controller calls it once a second.
  void updateDownloadInfo();
  // The end of the download: state 3 or 4 on the task and the item, then
  // the target's action.
  void URLFetchWithProgressComplete();
  void URLFetchWithProgressFailed(const QString& reason);

  // Button commands; `bySender` is true when the user pressed the button,
  // which also selects the item.
  void startPrograss(bool bySender);
  void pausePrograss(bool bySender);
  void importToConverter(bool bySender);
  void startParam();
  void deleteItemView();
  void openFile();
  void mousePressed();

 signals:
  // Anything shown has changed.
  void changed();

 private:
  void show(Element element, bool visible);
  void post(const char* notification);
  void selectInList();
  void setProgressValue(double value);
  void setState(int32_t code);

  std::shared_ptr<VideoInfoObject> itemInfo_;
  QPointer<GetVideoInfoThread> getVideoInfo_;
  std::unique_ptr<ItemDownload> downloadRequest_;
  DroglineView* list_ = nullptr;
  int32_t cellState_ = 0;
  QPointer<QObject> target_;
  FinishAction downloadFinishAction_;
  FailAction downloadFailAction_;
  double lastBytesReceived_ = 0;
  bool isSeleted_ = false;

  std::bitset<kElementCount> visible_;
  bool reParamEnabled_ = true;
  bool progressIndeterminate_ = false;
  bool progressAnimating_ = false;
  double progressValue_ = 0;
  QString title_;
  QString videoTime_;
  QString videoFormat_;
  QString videoSize_;
  QString downloadSpeed_;
  QString downloadSize_;
  QString iconImage_;
  QImage blogImage_;
  QString blogSkinImage_;
  QByteArray blogImageTiff_;
  QString failureReason_;
};
