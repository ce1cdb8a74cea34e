// What one row of the media list shows for an item, worked out from its node
// once per paint: the texts of the name, length, picture size and file size,
// the profile and its picture, the audio stream choice and the thumbnail.
#pragma once

#include <QString>
#include <QStringList>

#include "ValueObject/NodeInfo.h"

struct MediaItemSummary {
  QString name;           // the output name, which the user edits
  QString duration;       // "00:01:05"; of the trimmed part when trimmed
  QString resolution;     // "1280x720"; empty without a picture
  QString size;           // "12.3 MB"
  QString profileName;
  QString profileImage;   // the profile's picture name in the skin
  QStringList audioStreams;  // the names offered, "No audio" first when there are streams
  int selectedAudio = -1;    // index into audioStreams
  QString thumbnailPath;     // empty when there is none
  bool hasVideo = false;
  int childCount = 0;        // clips of a split item or files of a merge group

  static MediaItemSummary of(const NodeInfo& node);
  // The stream index (into the probed streams) an entry of audioStreams
  // stands for: -1 for "No audio".
  static int32_t streamForChoice(const NodeInfo& node, int choice);
  // "512 B", "1.5 KB", "12.3 MB", "1.02 GB".
  static QString sizeText(double bytes);
};
