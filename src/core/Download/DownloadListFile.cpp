// The download list file: a property list whose root is an array with one
// dictionary per task, top first, written through libplist.
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "CommonClass/CommonClass.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/PropertyList.h"
#include "CommonClass/StandardPaths.h"
#include "CommonClass/UserDefaults.h"
#include "Download/DownloadSettings.h"
#include "Download/DrogItemView.h"
#include "Download/PublicAction.h"

namespace {

constexpr const char* kListFileName = "downloadList.plist";

constexpr const char* kHtmlUrl = "htmlUrl";
constexpr const char* kVideoUrl = "videoUrl";
constexpr const char* kVideoTitle = "videoTitle";
constexpr const char* kSelectFileIndex = "SelectFileIndex";
constexpr const char* kUserAgent = "userAgent";
constexpr const char* kVideoImage = "videoImage";
constexpr const char* kVideoTime = "videoTime";
constexpr const char* kVideoFormat = "videoFormat";
constexpr const char* kVideoSize = "videoSize";
constexpr const char* kSavePath = "savePath";
constexpr const char* kVideoDownState = "videoDownState";

void insertText(QVariantMap& entry, const char* key, const QString& text) {
  if (!text.isNull()) entry.insert(QLatin1String(key), text);
}

QVariantMap entryOf(const DrogItemView& item) {
  const VideoInfoObject& task = *item.itemInfo();
  QVariantMap entry;
  insertText(entry, kHtmlUrl, task.htmUrlStr());
  insertText(entry, kVideoUrl, task.downURLStr());
  insertText(entry, kVideoTitle, task.titleStr());
  if (task.selectFileIndex() != -1) {
    // Not the index: a number taken from the task's identity. A restored task
    // makes its choice anew when the number is out of range.
    entry.insert(QLatin1String(kSelectFileIndex),
                 static_cast<qint64>(static_cast<int32_t>(reinterpret_cast<quintptr>(&task))));
  }
  if (!task.userAgent().isEmpty()) entry.insert(QLatin1String(kUserAgent), task.userAgent());
  if (!item.blogImageTiff().isEmpty()) entry.insert(QLatin1String(kVideoImage), item.blogImageTiff());
  insertText(entry, kVideoTime, task.videoTime());
  insertText(entry, kVideoFormat, task.videoFormat());
  insertText(entry, kVideoSize, task.strVideoSize());
  insertText(entry, kSavePath, task.savePath());
  if (task.videoDownState() != 0) {
    entry.insert(QLatin1String(kVideoDownState), static_cast<qint64>(static_cast<int32_t>(task.videoDownState())));
  }
  return entry;
}

// The text under `key`; not set when missing or not text.
QString textOf(const QVariantMap& entry, const char* key) {
  const QVariant value = entry.value(QLatin1String(key));
  return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

std::shared_ptr<VideoInfoObject> taskOf(const QVariantMap& entry) {
  auto task = std::make_shared<VideoInfoObject>();
  task->setHtmUrlStr(textOf(entry, kHtmlUrl));
  task->setDownURLStr(textOf(entry, kVideoUrl));
  task->setTitleStr(textOf(entry, kVideoTitle));
  if (entry.contains(QLatin1String(kSelectFileIndex))) {
    task->setSelectFileIndex(static_cast<int32_t>(entry.value(QLatin1String(kSelectFileIndex)).toLongLong()));
  }
  if (entry.contains(QLatin1String(kUserAgent))) task->setUserAgent(textOf(entry, kUserAgent));
  task->setBlogData(entry.value(QLatin1String(kVideoImage)).toByteArray());
  task->setVideoTime(textOf(entry, kVideoTime));
  task->setVideoFormat(textOf(entry, kVideoFormat));
  task->setStrVideoSize(textOf(entry, kVideoSize));
  task->setSavePath(textOf(entry, kSavePath));
  task->setVideoDownState(static_cast<int32_t>(entry.value(QLatin1String(kVideoDownState)).toLongLong()));
  return task;
}

// Moves a damaged list out of the way, so that the next save does not
// overwrite what may still be rescued from it.
void keepAside(const QString& path) {
  const QFileInfo file(path);
  const QString aside = file.dir().filePath(
      QStringLiteral("downloadList-damaged-%1.plist").arg(QDateTime::currentDateTime().toString("yyyyMMddHHmmss")));
  if (QFile::rename(path, aside)) {
    KMVLog::Log(QStringLiteral("The download list %1 is damaged: it was kept as %2 and the list starts empty")
                    .arg(path, aside));
  } else {
    KMVLog::Log(
        QStringLiteral("The download list %1 is damaged and cannot be moved aside; the list starts empty").arg(path));
  }
}

}  // namespace

QString PublicAction::downloadListPath() {
  return StandardPaths::privateDataPath() + QLatin1Char('/') + QLatin1String(kListFileName);
}

QList<std::shared_ptr<VideoInfoObject>> PublicAction::readDownloadList() {
  const QString path = downloadListPath();
  if (!QFileInfo::exists(path)) return {};
  const std::optional<QVariant> root = PropertyList::readFile(path);
  if (!root || root->typeId() != QMetaType::QVariantList) {
    keepAside(path);
    return {};
  }
  QList<std::shared_ptr<VideoInfoObject>> tasks;
  const QVariantList entries = root->toList();
  for (qsizetype i = 0; i < entries.size(); ++i) {
    if (entries[i].typeId() != QMetaType::QVariantMap) {
      KMVLog::Log(QStringLiteral("Entry %1 of the download list %2 is no task; it is left out").arg(i).arg(path));
      continue;
    }
    tasks.append(taskOf(entries[i].toMap()));
  }
  return tasks;
}

bool PublicAction::saveDownloadList(const QList<DrogItemView*>& items) {
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  defaults.setObject(QString::asprintf("%d", qualityParam), QStringLiteral("qualityParam"));
  defaults.setObject(QString::asprintf("%d", downloadModel), QStringLiteral("DownloadMode"));
  defaults.setObject(savePath, QStringLiteral("SavePath"));
  defaults.synchronize();

  QVariantList entries;
  for (const DrogItemView* item : items) entries.append(entryOf(*item));
  const QString path = downloadListPath();
  if (CommonClass::writeAtomically(path, PropertyList::toBinary(entries))) return true;
  KMVLog::Log(QStringLiteral("The download list %1 cannot be written").arg(path));
  return false;
}

bool PublicAction::creatOutputDirectory(const QString& path) {
  if (path.isEmpty()) return false;
  if (QFileInfo(path).isDir()) return true;
  return QDir().mkdir(path);
}
