// videoconverter tags FILE... [--json]: reads each file's tags the way adding
// it to the list does, with any embedded cover saved as a picture, and prints
// them. The exit code is 1 when the tags of any file could not be read.

#include <QDateTime>
#include <QJsonObject>
#include <QTextStream>

#include "Action/ApplicationLifecycle.h"
#include "MediaClass/MediaFileImporter.h"
#include "Commands.h"
#include "FileReportCommand.h"
#include "ValueObject/MediaMetaData.h"

namespace {

struct TextTag {
  int32_t key;
  const char* name;   // in JSON
  const char* label;  // in text
};

// Printed before the track and disc numbers, then after them.
constexpr TextTag kLeadingTags[] = {
    {METADATA_KEY_TITLE, "title", "Title:"},        {METADATA_KEY_COMMENT, "comment", "Comment:"},
    {METADATA_KEY_ARTIST, "artist", "Artist:"},     {METADATA_KEY_GENRE, "genre", "Genre:"},
    {METADATA_KEY_GENRES, "genres", "All genres:"}, {METADATA_KEY_COMPOSER, "composer", "Composer:"},
    {METADATA_KEY_ALBUM, "album", "Album:"},        {METADATA_KEY_ALBUM_ARTIST, "albumArtist", "Album artist:"},
};
constexpr TextTag kTrailingTags[] = {
    {METADATA_KEY_GROUPING, "grouping", "Grouping:"},
    {METADATA_KEY_YEAR, "year", "Year:"},
    {METADATA_KEY_TV_SHOW_NAME, "tvShowName", "TV show:"},
    {METADATA_KEY_TV_SEASON, "tvSeason", "Season:"},
    {METADATA_KEY_TV_EPISODE, "tvEpisode", "Episode:"},
    {METADATA_KEY_TV_EPISODE_ID, "tvEpisodeId", "Episode ID:"},
    {METADATA_KEY_DESCRIPTION, "metaDescription", "Description:"},
};

struct TagsReport {
  QString path;
  int32_t code = METADATA_OK;
  MediaMetaData tags;
};

TagsReport readFile(const QString& path) {
  const QString stamp = ApplicationLifecycle::timeStampUTC8(QDateTime::currentDateTimeUtc());
  TagsReport report;
  report.path = path;
  report.tags = MediaMetaData::initWithFile(path, MediaFileImporter::coverThumbnailPath(path, stamp), &report.code);
  return report;
}

// "N" or "N/TOTAL"; empty when there is no number.
QString numberPairText(int32_t current, int32_t total) {
  if (current <= 0 && total <= 0) return {};
  return total > 0 ? QStringLiteral("%1/%2").arg(current).arg(total) : QString::number(current);
}

QJsonObject toJson(const TagsReport& report) {
  QJsonObject object{{QStringLiteral("file"), report.path}};
  if (report.code != METADATA_OK) {
    object.insert(QStringLiteral("error"), QString::fromUtf8(GetMetaDataErrorText(report.code)));
    object.insert(QStringLiteral("code"), report.code);
    return object;
  }
  const MediaMetaData& tags = report.tags;
  for (const TextTag& tag : kLeadingTags) object.insert(QLatin1String(tag.name), tags.text(tag.key));
  object.insert(QStringLiteral("curTrackNum"), tags.curTrackNum());
  object.insert(QStringLiteral("totalTrackNum"), tags.totalTrackNum());
  object.insert(QStringLiteral("curDiskNum"), tags.curDiskNum());
  object.insert(QStringLiteral("totalDiskNum"), tags.totalDiskNum());
  for (const TextTag& tag : kTrailingTags) object.insert(QLatin1String(tag.name), tags.text(tag.key));
  object.insert(QStringLiteral("image"), tags.image().isEmpty() ? QJsonValue() : QJsonValue(tags.image()));
  return object;
}

void printText(QTextStream& out, QTextStream& err, const TagsReport& report) {
  if (report.code != METADATA_OK) {
    err << report.path << Qt::endl << "  Cannot read the tags: " << GetMetaDataErrorText(report.code) << Qt::endl;
    return;
  }
  int rows = 0;
  const auto row = [&out, &rows](const char* label, const QString& value) {
    if (value.isEmpty()) return;
    out << QStringLiteral("  %1 %2").arg(QLatin1String(label), -14).arg(value) << Qt::endl;
    ++rows;
  };
  const MediaMetaData& tags = report.tags;
  out << report.path << Qt::endl;
  for (const TextTag& tag : kLeadingTags) {
    // The list of every genre is worth a line only when there is more than the genre.
    if (tag.key != METADATA_KEY_GENRES || tags.genres() != tags.genre()) row(tag.label, tags.text(tag.key));
  }
  row("Track:", numberPairText(tags.curTrackNum(), tags.totalTrackNum()));
  row("Disc:", numberPairText(tags.curDiskNum(), tags.totalDiskNum()));
  for (const TextTag& tag : kTrailingTags) row(tag.label, tags.text(tag.key));
  row("Cover:", tags.image());
  if (rows == 0) out << "  No tags" << Qt::endl;
}

}  // namespace

int runTagsCommand(const QStringList& arguments) {
  static const FileReportCommand<TagsReport> command{
      "tags", readFile, [](const TagsReport& report) { return report.code != METADATA_OK; }, toJson, printText};
  return command.run(arguments);
}
