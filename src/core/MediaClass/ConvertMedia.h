// One conversion job: turns one list node (a file, or a merged node whose
// files are joined in order) with its editing settings and output profile
// into the converter's records, picks a free output name, starts the
// converter and answers progress questions until it ends. The end is
// announced by the distributed notification "CONVERTEND". A fresh job is
// made for every node; releasing it releases the converter.
#pragma once

#include <QSizeF>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <memory>

#include "ValueObject/NodeInfo.h"
#include "videoconverter.h"

// Shows the job's messages to the user.
class ConvertMediaDelegate {
 public:
  virtual ~ConvertMediaDelegate() = default;
  virtual void showMessage(const QString& message) = 0;
};

class ConvertMedia {
 public:
  static constexpr const char* kConvertEndNotification = "CONVERTEND";
  // The most input files one job joins.
  static constexpr int kMaxMediaItems = VC_MAX_MEDIA_ITEMS;

  ConvertMedia();
  // Releases the converter, stopping a conversion that still runs.
  ~ConvertMedia();
  ConvertMedia(const ConvertMedia&) = delete;
  ConvertMedia& operator=(const ConvertMedia&) = delete;

  // Not owned.
  void setDelegate(ConvertMediaDelegate* delegate) { delegate_ = delegate; }

  // Probes a file as adding it does, but shows why it failed through the
  // delegate on the main thread, waiting until it is shown. A successful
  // probe gives getLength() its answer before anything is converted.
  int32_t getMediaInfo(const QString& path, const QString& imageName);

  // Appends one record per file of `node`, in order. Returns 0, or -1 with
  // nothing appended when the files would pass kMaxMediaItems or a path does
  // not fit its field (refusal() says why).
  int32_t initMediaData(const NodeInfo::Ptr& node);
  // Fills the records, picks the output path and starts the conversion.
  // Returns -1 for a null or refused node, otherwise the converter's result
  // (0 = started, and the node's converter state becomes 1).
  int32_t encode(const NodeInfo::Ptr& node);

  // Microseconds of output written so far.
  double getCurrentTime() const;
  // Microseconds: the probed file's length while no record is filled, then
  // the length of the whole output.
  double getLength() const;
  void stopEnCode();
  // The partly written output of a stopped conversion stays on disk on purpose.
  void deleteVideoName() {}
  // The output path encode() chose.
  const QString& videoPath() const { return videoPath_; }

  // The picture size written for `node`: (0, 0) for a profile without video.
  static QSizeF getNodeResolutionSize(const NodeInfo& node);

  // Why the last initMediaData() or encode() refused the node.
  const QString& refusal() const { return refusal_; }
  // The converter's account of how the conversion this job started ended.
  struct Ending {
    int32_t outcome = VC_OUTCOME_NONE;  // a VideoConverterOutcome
    QString reason;
    QStringList files;  // kept under their final names
  };
  // Meaningful once hasEnded().
  Ending ending() const;

  // Whether the conversion this job started has ended. A "CONVERTEND" from
  // another program, which the distributed centre also delivers, leaves it false.
  bool hasEnded() const;

  int mediaItemCount() const { return count_; }
  const MediaItem& mediaItemAt(int index) const { return (*items_)[index]; }
  const OutputParam& outputParam() const { return *outputParam_; }

 private:
  void showMessage(const QString& message);

  std::unique_ptr<std::array<MediaItem, kMaxMediaItems>> items_;
  std::unique_ptr<OutputParam> outputParam_;
  int count_ = 0;
  // The probed record of getMediaInfo(), for getLength() before encode().
  std::unique_ptr<DECODER_INFO> probedInfo_;
  QString videoPath_;
  QString refusal_;
  ConvertMediaDelegate* delegate_ = nullptr;
  // The number of ended conversions when this job started one; -1 before.
  int64_t endsBeforeStart_ = -1;
};
