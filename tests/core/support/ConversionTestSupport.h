// Helpers of the tests that run real conversions: a small, fast output
// profile, a tiny clip, and a bounded wait on the event loop.
#pragma once

#include <QString>

#include <functional>

#include "ValueObject/ProfileSettingInfo.h"

namespace modeltest {

class MediaFolder;

// mpeg4 and AAC in mp4 at 160x120; the container and encoders can be changed.
ProfileSettingInfo smallProfile(const QString& format = QStringLiteral("mp4"),
                                const QString& extension = QStringLiteral("mp4"),
                                const QString& videoEncoder = QStringLiteral("mpeg4"),
                                const QString& audioEncoder = QStringLiteral("aac"));

// A one-second 160x120 clip with a tone, named `name` in `folder`; empty
// (and a test failure) when ffmpeg cannot make it.
QString tinyClip(const MediaFolder& folder, const QString& name);

// Runs the event loop until `done` holds; false when a minute passed first.
bool waitUntil(const std::function<bool()>& done);

}  // namespace modeltest
