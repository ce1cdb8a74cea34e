// Reads added files on a pool of worker threads: the probe with its
// thumbnail and keyframe index, the file's properties and its tags. Each file
// becomes a list node with the settings of a newly added item; the nodes are
// handed over on the owner's thread in the order the files were given, so
// the list fills in that order however the workers finish.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QThreadPool>

#include <atomic>
#include <memory>
#include <vector>

#include "MediaClass/PlayVideo.h"
#include "ValueObject/MediaFileInfo.h"
#include "ValueObject/NodeInfo.h"

class MediaFileImporter : public QObject {
  Q_OBJECT

 public:
  // What reading one file gave: a node, or none when the probe failed.
  struct Result {
    QString path;
    NodeInfo::Ptr node;
  };

  // `workerCount` 0 takes one worker per processor.
  explicit MediaFileImporter(int workerCount = 0, QObject* parent = nullptr);
  // Waits for the files being read; files not begun yet are dropped.
  ~MediaFileImporter() override;

  // Queues the files after those still being read.
  void add(const QStringList& paths);
  bool isRunning() const { return delivered_ < results_.size(); }
  // Files delivered and files queued since the importer was last idle.
  int doneCount() const { return static_cast<int>(delivered_); }
  int totalCount() const { return static_cast<int>(results_.size()); }

  // Reads one file on the calling thread.
  static Result importFile(const QString& path);

  // "<thumbnail folder>/<name without extension><stamp>.bmp"; empty while no
  // thumbnail folder is set.
  static QString thumbnailPath(const QString& path, const QString& stamp);
  // "<thumbnail folder>/thumbNail<name without extension><stamp>.bmp", where
  // the file's embedded cover is saved; empty while no thumbnail folder is set.
  static QString coverThumbnailPath(const QString& path, const QString& stamp);
  // The properties of `path` from a successful probe; `imageName` is the
  // thumbnail's path, kept only when that file exists.
  static MediaFileInfo makeMediaFileInfo(const QString& path, const QString& imageName, const PlayVideo& probe);

 signals:
  // The next file in the given order has been read.
  void fileImported(const MediaFileImporter::Result& result);
  // Every queued file has been delivered.
  void finished();

 private:
  void store(std::size_t index, const Result& result);

  QThreadPool pool_;
  std::shared_ptr<std::atomic<bool>> cancelled_ = std::make_shared<std::atomic<bool>>(false);
  // Results of the current batch by position; delivered_ counts those handed over.
  std::vector<std::unique_ptr<Result>> results_;
  std::size_t delivered_ = 0;
};
