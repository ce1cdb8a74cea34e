#include "PublicAction.h"

#include <QMap>
#include <QStringList>

namespace {

double area(const DownloadVideoInfo& file) { return file.dimension().width() * file.dimension().height(); }

bool isMp4(const DownloadVideoInfo& file) { return file.extention().toUpper() == QLatin1String("MP4"); }

// Walks `candidates` (indexes into `files`) from `best`: a candidate replaces
// the best only when it is preferred, and the walk stops once the best is an
// MP4, at the latest after each step. `stillCandidate` ends the walk too.
template <class StillCandidate>
qsizetype bestOf(const QList<DownloadVideoInfo>& files, qsizetype best, const QList<qsizetype>& candidates,
                 StillCandidate stillCandidate) {
  for (const qsizetype candidate : candidates) {
    if (!stillCandidate(candidate, best)) break;
    if (CompareDownloadQualityParam(files[best], files[candidate]) == -1) best = candidate;
    if (isMp4(files[best])) break;
  }
  return best;
}

}  // namespace

int CompareDownloadQualityParam(const DownloadVideoInfo& a, const DownloadVideoInfo& b) {
  if (a.extention() == b.extention()) return 0;
  const QString first = a.extention().toUpper();
  const QString second = b.extention().toUpper();
  for (const QLatin1String format : {QLatin1String("MP4"), QLatin1String("WEBM"), QLatin1String("FLV")}) {
    if (first == format) return 1;
    if (second == format) return -1;
  }
  return 0;
}

void PublicAction::autoSetSelectFileIndex(VideoInfoObject& task, int qualityParam) {
  const QList<DownloadVideoInfo>& files = task.arrFileList();
  if (files.isEmpty()) return;
  const auto sameArea = [&files](qsizetype candidate, qsizetype best) {
    return area(files[candidate]) == area(files[best]);
  };
  const auto anyCandidate = [](qsizetype, qsizetype) { return true; };

  if (qualityParam == 0) {
    QList<qsizetype> following;
    for (qsizetype i = 1; i < files.size(); ++i) following.append(i);
    task.setSelectFileIndex(bestOf(files, 0, following, sameArea));
  } else if (qualityParam == 2) {
    QList<qsizetype> preceding;
    for (qsizetype i = files.size() - 2; i >= 0; --i) preceding.append(i);
    task.setSelectFileIndex(bestOf(files, files.size() - 1, preceding, sameArea));
  } else if (qualityParam == 1) {
    // Groups of one frame size, in order of first appearance.
    QStringList keys;
    QMap<QString, QList<qsizetype>> groups;
    for (qsizetype i = 0; i < files.size(); ++i) {
      const QString key = QString::asprintf("%04dx%04d", static_cast<int>(files[i].dimension().width()),
                                            static_cast<int>(files[i].dimension().height()));
      if (!groups.contains(key)) keys.append(key);
      groups[key].append(i);
    }
    QList<qsizetype> middle = groups.value(keys.at(keys.size() / 2));
    const qsizetype first = middle.takeFirst();
    task.setSelectFileIndex(bestOf(files, first, middle, anyCandidate));
  }
}
