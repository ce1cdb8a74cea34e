// The download window's shared class operations of page analysis: the
// quality rule that picks one of the files found.
#pragma once

#include <memory>

#include "Download/DownloadVideoInfo.h"
#include "Download/VideoInfoObject.h"

class PublicAction {
 public:
  // Sets the task's selectFileIndex on its sorted file list by the quality
  // rule: 0 the largest frame, 2 the smallest, 1 the middle group of frame
  // sizes; among files of one frame size a better format wins (MP4, then
  // WebM, then FLV), and the search stops at the first MP4. Other rules
  // leave the index as it is.
  static void autoSetSelectFileIndex(VideoInfoObject& task, int qualityParam);
};

// The format preference of a over b: 0 for equal extensions (letter case
// counts) and for formats outside MP4, WebM and FLV; 1 when a is preferred;
// -1 when b is.
int CompareDownloadQualityParam(const DownloadVideoInfo& a, const DownloadVideoInfo& b);
