// Writes a node's tags into the file(s) its conversion produced, through the
// tag library's record.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>

#include "ValueObject/MediaMetaData.h"
#include "ValueObject/NodeInfo.h"
#include "metadataedit.h"

// What writing the tags did: the files that now carry them and those that
// refused, each with the tag library's code. A file that refused is unchanged.
struct AddMetaDataResult {
  struct Failure {
    QString path;
    int32_t code = METADATA_OK;
  };
  QStringList writtenFiles;
  QList<Failure> failures;

  bool succeeded() const { return failures.isEmpty(); }
};

class AddMetaDataAction {
 public:
  // Writes the node's `metaData` into the output at `outputPath`, or into
  // its numbered parts "<path without extension>_<i>.<extension>" when the
  // node was split. Nothing is written when the node's profile cannot carry
  // tags or no tag has a value. Failures are also logged.
  static AddMetaDataResult addMetaData(const NodeInfo& node, const QString& outputPath);

  // The number of parts a split node's conversion makes: by length when a
  // split length is set and the mode is not 1, else by clip count; 1 when
  // not split.
  static int32_t getNodeSplitNum(const NodeInfo& node);

  // The files a conversion of the node made at `outputPath`: the parts _0,
  // _1, ... up to the split count that exist, ending at the first missing
  // one, or the output itself when the node was not split.
  static QStringList outputFiles(const NodeInfo& node, const QString& outputPath);

  // A zero-filled record for 64 entries holding the tags in writing order:
  // 1, 2, 3, 4, 6, 7, 8, 9, then the track and disc numbers, then 12 ... 18.
  // Empty texts and numbers of 0 are left out.
  static std::unique_ptr<MetaDataInfo> makeDataInfos(const MediaMetaData& tags);
};
