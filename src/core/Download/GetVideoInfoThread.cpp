#include "GetVideoInfoThread.h"

#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <mutex>
#include <thread>

#include "ASIHTTP/ASIHTTPRequest.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/MainThread.h"
#include "CommonClass/NotificationCenter.h"
#include "Download/DownloadSettings.h"
#include "Download/ParsedVideoRecords.h"
#include "Download/PublicAction.h"
#include "parseurl.h"

namespace {

// The largest thumbnail kept; a larger one counts as a failed fetch.
constexpr qsizetype kLargestThumbnail = 8 * 1024 * 1024;

struct ParsedFiles {
  QList<DownloadVideoInfo> files;
  int result = PARSE_OK;
};

// Runs StartParse for `address`, once more after a failure unless stopped,
// and turns the list into model objects.
ParsedFiles parsePage(const QByteArray& address, const std::atomic<bool>& stopped) {
  ParsedFiles parsed;
  for (int attempt = 0; attempt < 2 && !stopped.load(); ++attempt) {
    ParsedVideoEntry* list = nullptr;
    parsed.result = StartParse(address.constData(), 0, &list);
    if (parsed.result == PARSE_OK) {
      parsed.files = downloadVideoInfosOf(list);
      freeParsedVideoEntries(list);
      break;
    }
    KMVLog::Log(QStringLiteral("StartParse %1 failed: %2")
                    .arg(QString::fromUtf8(address), QString::fromLatin1(GetParseErrorText(parsed.result))));
  }
  return parsed;
}

// Analyses never overlap: the library's strings of one result stay valid
// until they are copied, and each analysis hands its result to the main
// thread before the next one starts.
std::mutex& oneAnalysisAtATime() {
  static std::mutex mutex;
  return mutex;
}

double area(const DownloadVideoInfo& file) { return file.dimension().width() * file.dimension().height(); }

// Larger frames first; at equal frames larger files first.
void sortBySizeDescending(QList<DownloadVideoInfo>& files) {
  std::stable_sort(files.begin(), files.end(), [](const DownloadVideoInfo& a, const DownloadVideoInfo& b) {
    if (area(a) != area(b)) return area(a) > area(b);
    return a.videoSize() > b.videoSize();
  });
}

}  // namespace

GetVideoInfoThread::GetVideoInfoThread(QObject* parent) : QObject(parent) {}

GetVideoInfoThread::~GetVideoInfoThread() { stopGetVideoInfo(); }

void GetVideoInfoThread::getVideoInfo(const std::shared_ptr<VideoInfoObject>& task) {
  if (stopped_) stopped_->store(true);
  stopped_ = std::make_shared<std::atomic<bool>>(false);
  status_ = 0;
  isFinish_ = false;
  videoInfoObject_ = task;
  videoIndex_ = 0;
  const uint64_t analysis = ++analysis_;

  std::thread([worker = QPointer<GetVideoInfoThread>(this), address = task->htmUrlStr().toUtf8(), stopped = stopped_,
               analysis] {
    const std::lock_guard lock(oneAnalysisAtATime());
    ParsedFiles parsed = parsePage(address, *stopped);
    MainThread::post([worker, parsed = std::move(parsed), analysis] {
      if (worker && worker->analysis_ == analysis) worker->receiveVideoFiles(parsed.files, parsed.result);
    });
  }).detach();
}

void GetVideoInfoThread::receiveVideoFiles(const QList<DownloadVideoInfo>& files, int parseResult) {
  if (status_ == -1) return;
  lastParseResult_ = parseResult;
  videoInfoObject_->setArrFileList(files);
  videoIndex_ = -1;
  getVideoFileSizes();
}

void GetVideoInfoThread::getVideoFileSizes() {
  ++videoIndex_;
  if (status_ == -1 || !videoInfoObject_) return;
  const QList<DownloadVideoInfo>& files = videoInfoObject_->arrFileList();
  if (videoIndex_ < files.size()) {
    const std::shared_ptr<ASIHTTPRequest> request =
        ASIHTTPRequest::requestWithURL(QUrl(files[videoIndex_].downloadUrl()));
    curRequest_ = request;
    request->setDelegate(this);
    request->addRequestHeader(QStringLiteral("User-Agent"), videoInfoObject_->userAgent());
    request->setDidReceiveResponseHeadersSelector(&GetVideoInfoThread::didReceiveResponseHeaders);
    request->setDidReceiveDataSelector(&GetVideoInfoThread::requestDidReceiveData);
    // A body that ends without a byte has told all it will: its size is its length.
    request->setDidFinishSelector(&GetVideoInfoThread::takeProbedSize);
    request->setDidFailSelector(&GetVideoInfoThread::didRequestFail);
    request->startAsynchronous();
  } else if (videoIndex_ == files.size()) {
    MainThread::post([worker = QPointer<GetVideoInfoThread>(this), analysis = analysis_] {
      if (worker && worker->analysis_ == analysis && worker->status_ != -1) worker->getVideoInfoFinish();
    });
  }
}

void GetVideoInfoThread::didReceiveResponseHeaders(ASIHTTPRequest* request, const ASIHeaderFields&) {
  if (request != curRequest_.get()) return;
  // An error page is not the file.
  if (request->responseStatusCode() >= 400) {
    dropProbedFile(request);
    return;
  }
  if (request->contentLength() != 0) takeProbedSize(request);
}

void GetVideoInfoThread::requestDidReceiveData(ASIHTTPRequest* request, const QByteArray&) { takeProbedSize(request); }

void GetVideoInfoThread::didRequestFail(ASIHTTPRequest* request) { dropProbedFile(request); }

void GetVideoInfoThread::takeProbedSize(ASIHTTPRequest* request) {
  if (request != curRequest_.get()) return;
  // The announced length, 0 when there is none, replaces what the page said.
  QList<DownloadVideoInfo> files = videoInfoObject_->arrFileList();
  files[videoIndex_].setVideoSize(static_cast<qint64>(request->contentLength()));
  videoInfoObject_->setArrFileList(files);
  request->setDelegate(nullptr);
  request->cancel();
  curRequest_.reset();
  getVideoFileSizes();
}

void GetVideoInfoThread::dropProbedFile(ASIHTTPRequest* request) {
  if (request != curRequest_.get()) return;
  request->setDelegate(nullptr);
  request->cancel();
  curRequest_.reset();
  QList<DownloadVideoInfo> files = videoInfoObject_->arrFileList();
  files.removeAt(videoIndex_);
  videoInfoObject_->setArrFileList(files);
  --videoIndex_;
  getVideoFileSizes();
}

void GetVideoInfoThread::getVideoInfoFinish() {
  VideoInfoObject& task = *videoInfoObject_;
  QList<DownloadVideoInfo> files = task.arrFileList();
  sortBySizeDescending(files);
  task.setArrFileList(files);
  isFinish_ = true;
  if (files.isEmpty()) {
    postAnalysisEnd();
    return;
  }
  // An index equal to the count passes as valid here and chooses nothing.
  if (task.selectFileIndex() < 0 || task.selectFileIndex() > files.size()) {
    PublicAction::autoSetSelectFileIndex(task, qualityParam);
  }
  if (task.selectFileIndex() < 0 || task.selectFileIndex() >= files.size()) {
    postAnalysisEnd();
    return;
  }
  const DownloadVideoInfo& chosen = files[task.selectFileIndex()];
  task.setDownURLStr(chosen.downloadUrl());
  task.setStrVideoSize(chosen.videoSizeText());
  task.setVideoFormat(chosen.extention());
  task.setVideoTime(QString::number(chosen.length()));
  task.setTitleStr(chosen.videoTitle());
  task.setImageUrl(chosen.imgURL());
  task.setImageData(QByteArray());
  const QUrl thumbnail(chosen.imgURL());
  if (chosen.imgURL().isEmpty() || !thumbnail.isValid()) {
    postAnalysisEnd();
    return;
  }
  thumbnail_.clear();
  const std::shared_ptr<ASIHTTPRequest> request = ASIHTTPRequest::requestWithURL(thumbnail);
  curRequest_ = request;
  request->setDelegate(this);
  request->setDidReceiveDataSelector(&GetVideoInfoThread::thumbnailDidReceiveData);
  request->setDidFinishSelector(&GetVideoInfoThread::thumbnailDidEnd);
  request->setDidFailSelector(&GetVideoInfoThread::thumbnailDidEnd);
  request->startAsynchronous();
}

void GetVideoInfoThread::thumbnailDidReceiveData(ASIHTTPRequest* request, const QByteArray& data) {
  if (request != curRequest_.get()) return;
  thumbnail_.append(data);
  if (thumbnail_.size() > kLargestThumbnail) {
    request->setDelegate(nullptr);
    request->cancel();
    thumbnail_.clear();
    thumbnailDidEnd(request);
  }
}

void GetVideoInfoThread::thumbnailDidEnd(ASIHTTPRequest* request) {
  if (request != curRequest_.get()) return;
  const bool fetched = !request->error() && request->responseStatusCode() < 400 && !thumbnail_.isEmpty();
  videoInfoObject_->setImageData(fetched ? thumbnail_ : QByteArray());
  thumbnail_.clear();
  curRequest_.reset();
  postAnalysisEnd();
}

void GetVideoInfoThread::postAnalysisEnd() {
  const std::shared_ptr<VideoInfoObject> task = videoInfoObject_;
  NotificationCenter::defaultCenter().postNotificationName(QLatin1String(kAnalysisEndNotification),
                                                           QVariant::fromValue(task));
  emit videoInfoDidFinish(task);
}

void GetVideoInfoThread::stopGetVideoInfo() {
  status_ = -1;
  if (stopped_) stopped_->store(true);
  if (curRequest_) {
    curRequest_->setDelegate(nullptr);
    curRequest_->cancel();
    curRequest_.reset();
  }
}
