// The download window's shared class operations: the quality rule that
// picks one of the files a page analysis found, the download list file and
// the download folder.
#pragma once

#include <QList>
#include <QString>

#include <memory>

#include "Download/DownloadVideoInfo.h"
#include "Download/VideoInfoObject.h"

class DrogItemView;

class PublicAction {
 public:
  // Sets the task's selectFileIndex on its sorted file list by the quality
  // rule: 0 the largest frame, 2 the smallest, 1 the middle group of frame
  // sizes; among files of one frame size a better format wins (MP4, then
  // WebM, then FLV), and the search stops at the first MP4. Other rules
  // leave the index as it is.
  static void autoSetSelectFileIndex(VideoInfoObject& task, int qualityParam);

  // "downloadList.plist" in the private data folder.
  static QString downloadListPath();
  // The tasks of the download list file, top first. A missing file gives
  // none; a damaged one is kept aside under another name, logged, and gives
  // none, so that the next save does not overwrite it.
  static QList<std::shared_ptr<VideoInfoObject>> readDownloadList();
  // Writes the download user defaults ("qualityParam", "DownloadMode",
  // "SavePath"), then the items' tasks and thumbnails, whole and atomically.
  // False when the file could not be written, which is logged.
  static bool saveDownloadList(const QList<DrogItemView*>& items);
  // Creates the folder when there is none, without intermediate folders.
  static bool creatOutputDirectory(const QString& path);
};

// The format preference of a over b: 0 for equal extensions (letter case
// counts) and for formats outside MP4, WebM and FLV; 1 when a is preferred;
// -1 when b is.
int CompareDownloadQualityParam(const DownloadVideoInfo& a, const DownloadVideoInfo& b);
