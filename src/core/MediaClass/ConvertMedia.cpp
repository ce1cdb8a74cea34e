#include "ConvertMedia.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <atomic>
#include <chrono>

#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/MainThread.h"
#include "MediaClass/MediaFileProbe.h"
#include "MediaClass/MediaItemRecord.h"
#include "MediaClass/OutputParamRecord.h"
#include "MediaClass/OutputResolution.h"

namespace {

using Clock = std::chrono::steady_clock;

// The converter runs one conversion at a time and calls back without
// arguments, so the start time and the count of ends are process-wide.
std::atomic<Clock::rep> conversionStart{0};
std::atomic<int64_t> endedConversions{0};

// Called once on a converter thread when a conversion has ended.
void conversionEnded() {
  const Clock::duration waste = Clock::now().time_since_epoch() - Clock::duration(conversionStart.load());
  KMVLog::Log(QString::asprintf("enCodeEnd..... waste %.2f", std::chrono::duration<double>(waste).count()));
  ++endedConversions;
  DistributedNotificationCenter::defaultCenter().postNotificationName(
      QLatin1String(ConvertMedia::kConvertEndNotification), QString(), true);
}

// The file nodes of `node` in order, at any depth.
void collectFiles(const NodeInfo::Ptr& node, NodeInfo::List& files) {
  const int count = node->getChildNodeCount();
  if (count == 0) {
    files.append(node);
    return;
  }
  for (int index = 0; index < count; ++index) collectFiles(node->getChildNodeAtIndex(index), files);
}

}  // namespace

ConvertMedia::ConvertMedia()
    : items_(std::make_unique<std::array<MediaItem, kMaxMediaItems>>()), outputParam_(std::make_unique<OutputParam>()) {
  // Made here, on the main thread, before a converter thread posts through it.
  DistributedNotificationCenter::defaultCenter();
}

ConvertMedia::~ConvertMedia() { VideoConverter_Destory(); }

void ConvertMedia::showMessage(const QString& message) {
  if (delegate_ == nullptr) return;
  if (MainThread::isCurrent()) {
    delegate_->showMessage(message);
  } else {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [this, &message] { delegate_->showMessage(message); },
        Qt::BlockingQueuedConnection);
  }
}

int32_t ConvertMedia::getMediaInfo(const QString& path, const QString& imageName) {
  if (path.isEmpty()) {
    showMessage(QStringLiteral("Please add the video files!"));
    return -1;
  }
  const MediaFileProbe probe = probeMediaFile(path, imageName, false);
  if (probe.result != 0) {
    showMessage(probe.message);
    return probe.result;
  }
  probedInfo_ = std::make_unique<DECODER_INFO>(probe.info);
  return 0;
}

int32_t ConvertMedia::initMediaData(const NodeInfo::Ptr& node) {
  refusal_.clear();
  if (node == nullptr) return -1;
  NodeInfo::List files;
  collectFiles(node, files);
  if (count_ + files.size() > kMaxMediaItems) {
    refusal_ = QStringLiteral("One conversion joins at most %1 files; this one would join %2.")
                   .arg(kMaxMediaItems)
                   .arg(count_ + files.size());
    return -1;
  }
  for (const NodeInfo::Ptr& file : files) {
    refusal_ = MediaItemRecord::whyRefused(*file);
    if (!refusal_.isEmpty()) return -1;
  }
  for (const NodeInfo::Ptr& file : files) MediaItemRecord::fill(*file, (*items_)[count_++]);
  return 0;
}

int32_t ConvertMedia::encode(const NodeInfo::Ptr& node) {
  if (node == nullptr || initMediaData(node) != 0) return -1;
  const QString path =
      OutputParamRecord::freeOutputPath(node->outputPath(), node->outputFilename(), node->curProfileSetting().extName(),
                                        OutputParamRecord::segmentLengthUs(*node) > 0);
  refusal_ = OutputParamRecord::whyRefused(*node, path);
  if (!refusal_.isEmpty()) return -1;
  videoPath_ = path;
  OutputParamRecord::fill(*node, path, *outputParam_);

  conversionStart = Clock::now().time_since_epoch().count();
  endsBeforeStart_ = endedConversions.load();
  const int32_t result = VideoConverter_Convert(items_->data(), count_, outputParam_.get(), nullptr, 640, 480, 0);
  if (result == 0) node->setConverterState(1);
  VideoConverter_ConvertEndCallBack(conversionEnded);
  return result;
}

double ConvertMedia::getCurrentTime() const { return static_cast<double>(VideoConverter_GetCurrentTime()); }

double ConvertMedia::getLength() const {
  if (count_ == 0) return probedInfo_ != nullptr ? static_cast<double>(probedInfo_->m_Duration) : 0;
  return static_cast<double>(VideoConverter_GetDuration());
}

void ConvertMedia::stopEnCode() { VideoConverter_Abort(); }

QSizeF ConvertMedia::getNodeResolutionSize(const NodeInfo& node) { return OutputResolution::forNode(node); }

ConvertMedia::Ending ConvertMedia::ending() const {
  ConvertOutcome outcome{};
  outcome.m_cbsize = VC_CONVERT_OUTCOME_SIZE;
  if (VideoConverter_GetConvertOutcome(&outcome) != 0) return {};
  Ending ending{outcome.m_Outcome, QString::fromUtf8(outcome.m_Reason), {}};
  std::array<char, sizeof(outcome.m_FirstFile)> path{};
  for (int index = 0; index < outcome.m_FileCount; ++index) {
    if (VideoConverter_GetOutputFile(index, path.data(), static_cast<int>(path.size())) == 0) {
      ending.files.append(QString::fromUtf8(path.data()));
    }
  }
  return ending;
}

bool ConvertMedia::hasEnded() const { return endsBeforeStart_ >= 0 && endedConversions.load() > endsBeforeStart_; }
