// Tagged media for the tag tests, made by the ffmpeg command, and ffprobe's
// view of the tags and cover a file carries.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include "support/GeneratedMedia.h"

namespace modeltest {

// A 64x48 test picture; the name's extension picks the image format.
QString testPicture(const MediaFolder& folder, const QString& name);

// A one-second clip (MP4, MOV: test picture and tone; MP3 and other audio
// names: tone only) carrying `tags` ("key=value" as ffmpeg's -metadata takes
// them) and, when `cover` is not empty, that picture as its attached cover.
QString taggedClip(const MediaFolder& folder, const QString& name, const QStringList& tags,
                   const QString& cover = QString());

// Container-level tags as ffprobe reads them, keys in lower case.
QMap<QString, QString> ffprobeTags(const QString& path);
// Codec of the file's attached picture, such as "png" or "mjpeg"; empty when none.
QString ffprobeCoverCodec(const QString& path);
// Codec of the file's first stream: "bmp" for a BMP picture.
QString ffprobeFirstCodec(const QString& path);

// The bytes of a file; empty when it cannot be read.
QByteArray fileBytes(const QString& path);

}  // namespace modeltest
