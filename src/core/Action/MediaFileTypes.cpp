#include "MediaFileTypes.h"

#include <QFileInfo>

namespace {

QStringList inBothCases(const QStringList& extensions) {
  QStringList result = extensions;
  for (const QString& extension : extensions) result.append(extension.toLower());
  return result;
}

}  // namespace

const QStringList& MediaFileTypes::videoExtensions() {
  static const QStringList extensions{"MTS", "M2T",  "TP",   "TOD", "BIK", "ASX",  "MPG",  "MKV", "Y4M", "MOD",  "TS",
                                      "PVR", "WEBM", "TRP",  "RGB", "M4V", "AMV",  "3GP",  "WMV", "R3D", "MOV",  "WTV",
                                      "F4F", "OGM",  "F4V",  "3G2", "RM",  "DIVX", "M2TS", "VOB", "MXF", "OGV",  "MP4",
                                      "VIV", "OGG",  "MPEG", "DV",  "YUV", "ASF",  "DAT",  "FLV", "MVI", "RMVB", "AVI"};
  return extensions;
}

const QStringList& MediaFileTypes::audioExtensions() {
  static const QStringList extensions{"MP2", "VOX", "3GA", "AMR", "AC3", "M4R",  "RA",  "MP3", "MKA", "PCM", "SHN",
                                      "TAK", "WAV", "VOC", "M4A", "DSS", "APE",  "QCP", "WV",  "CAF", "M4B", "FLAC",
                                      "AWB", "WMA", "MPC", "AIF", "AAC", "AIFF", "AU",  "DTS", "TTA"};
  return extensions;
}

QStringList MediaFileTypes::acceptedExtensions() {
  return inBothCases(videoExtensions()) + inBothCases(audioExtensions());
}

const QStringList& MediaFileTypes::filterNames() {
  static const QStringList names{"All Support Files", "Supported Video Files", "Support Audio Files", "All File(*.*)"};
  return names;
}

QStringList MediaFileTypes::configOpenAllowFileWithIndex(int index) {
  switch (index) {
    case 0: return acceptedExtensions();
    case 1: return inBothCases(videoExtensions());
    case 2: return inBothCases(audioExtensions());
    default: return {};
  }
}

bool MediaFileTypes::isAccepted(const QString& path) {
  const QString suffix = QFileInfo(path).suffix();
  return !suffix.isEmpty() && acceptedExtensions().contains(suffix);
}
