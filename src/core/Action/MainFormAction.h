// The main list's side of adding files: each file is read on a worker (see
// MediaFileImporter) and becomes a node under the main root, in the order
// the files were given, and the window is told to show a row for it. Files
// that cannot be decoded are reported in one alert once every file of the
// batch has been read.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <cstdint>

#include "MediaClass/MediaFileImporter.h"
#include "ValueObject/NodeInfo.h"
#include "ValueObject/UIInfoDB.h"

// What the main window is told while files are added.
class MainFormActionDelegate {
 public:
  virtual ~MainFormActionDelegate() = default;
  // A node was appended to the main list.
  virtual void addItemView(const NodeInfo::Ptr& /*node*/) {}
};

class MainFormAction : public QObject {
  Q_OBJECT

 public:
  // The adding number the next added file gets; counts every file added in
  // this process.
  static int32_t totalAddFileNum;

  // `workerCount` 0 reads one file per processor at a time.
  MainFormAction(UIInfoDB& db, MainFormActionDelegate* delegate, int workerCount = 0, QObject* parent = nullptr);

  // Adds each path, in order, as a node of the main list; returns at once.
  // Paths given while a batch is being read join that batch.
  void addFile(const QStringList& paths);
  bool isAdding() const { return importer_.isRunning(); }
  // Files read and files to read in the current batch.
  int doneCount() const { return importer_.doneCount(); }
  int totalCount() const { return importer_.totalCount(); }

  // Appends `node` to the main list.
  static void addNodeToRootNode(UIInfoDB& db, const NodeInfo::Ptr& node);

  // "There is 1 file:\n<names> Decode failed" or "There are <n> files:\n...".
  static QString decodeFailedTitle(int count, const QString& failedNames);

 signals:
  void progress(int done, int total);
  // The batch has been added and its failures reported.
  void finished();

 private:
  void fileImported(const MediaFileImporter::Result& result);
  void batchFinished();

  UIInfoDB& db_;
  MainFormActionDelegate* delegate_;
  MediaFileImporter importer_;
  QString failedNames_;
  int failedCount_ = 0;
};
