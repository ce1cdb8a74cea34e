// The analysis of one task's page: the page-analysis library runs on a
// thread of its own (with one retry), then, on the main thread, each file's
// size is probed over HTTP one at a time, the files are sorted, one is
// chosen by the quality rule, the task is filled in and its thumbnail
// fetched, and "postId" is posted with the task. A stopped worker posts
// nothing.
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

#include <atomic>
#include <cstdint>
#include <memory>

#include "ASIHTTP/ASIHTTPRequestDelegate.h"
#include "Download/DownloadVideoInfo.h"
#include "Download/VideoInfoObject.h"

class ASIHTTPRequest;

class GetVideoInfoThread : public QObject, public ASIHTTPRequestDelegate {
  Q_OBJECT

 public:
  // The notification posted, with the task as object, when an analysis ends.
  static constexpr const char* kAnalysisEndNotification = "postId";

  explicit GetVideoInfoThread(QObject* parent = nullptr);
  // Stops the worker.
  ~GetVideoInfoThread() override;

  // Analyses `task`'s page (retaining the task): the library runs on a newly
  // detached thread; the rest follows on the main thread. Call on the main
  // thread; a new call abandons an analysis still running.
  void getVideoInfo(const std::shared_ptr<VideoInfoObject>& task);
  // Probes the size of the next file, or ends the analysis after the last.
  void getVideoFileSizes();
  // Callbacks of the size probe.
  void didReceiveResponseHeaders(ASIHTTPRequest* request, const ASIHeaderFields& headers);
  void requestDidReceiveData(ASIHTTPRequest* request, const QByteArray& data);
  void didRequestFail(ASIHTTPRequest* request);
  // Sorts, chooses, fills in the task, then fetches its thumbnail and posts
  // "postId". Runs on the main thread.
  void getVideoInfoFinish();
  // From now on the worker starts nothing and posts nothing.
  void stopGetVideoInfo();

  // -1 once stopped.
  int32_t status() const { return status_; }
  // Set when the result has been applied.
  bool isFinish() const { return isFinish_; }
  // Index of the file whose size is being probed.
  int32_t videoIndex() const { return videoIndex_; }
  const std::shared_ptr<VideoInfoObject>& videoInfoObject() const { return videoInfoObject_; }
  const std::shared_ptr<ASIHTTPRequest>& curRequest() const { return curRequest_; }
  void setCurRequest(const std::shared_ptr<ASIHTTPRequest>& request) { curRequest_ = request; }
  // What StartParse answered last (a ParseResult), for messages.
  int lastParseResult() const { return lastParseResult_; }

 signals:
  // The analysis of `task` has ended and "postId" has been posted.
  void videoInfoDidFinish(std::shared_ptr<VideoInfoObject> task);

 private:
  // The library's result, handed from the analysis thread.
  void receiveVideoFiles(const QList<DownloadVideoInfo>& files, int parseResult);
  // The probe of the current file came to nothing: the file is dropped.
  void dropProbedFile(ASIHTTPRequest* request);
  // Ends the probe of the current file with the size the response announced.
  void takeProbedSize(ASIHTTPRequest* request);
  // Callbacks of the thumbnail request.
  void thumbnailDidReceiveData(ASIHTTPRequest* request, const QByteArray& data);
  void thumbnailDidEnd(ASIHTTPRequest* request);
  void postAnalysisEnd();

  int32_t status_ = 0;
  bool isFinish_ = false;
  int32_t videoIndex_ = 0;
  std::shared_ptr<VideoInfoObject> videoInfoObject_;
  std::shared_ptr<ASIHTTPRequest> curRequest_;
  int lastParseResult_ = 0;
  // Told to the analysis thread, which gives up its retry once it is set.
  std::shared_ptr<std::atomic<bool>> stopped_;
  // Counts the analyses started, so that an abandoned one's result is ignored.
  uint64_t analysis_ = 0;
  QByteArray thumbnail_;
};
