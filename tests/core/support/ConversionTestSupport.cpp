#include "support/ConversionTestSupport.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

#include "support/GeneratedMedia.h"

namespace modeltest {

ProfileSettingInfo smallProfile(const QString& format, const QString& extension, const QString& videoEncoder,
                                const QString& audioEncoder) {
  ProfileSettingInfo profile;
  profile.setProfileName(QStringLiteral("Small ") + extension);
  profile.setFormat(format);
  profile.setExtName(extension);
  profile.setType(ProfileSettingInfo::kTypeVideo);
  profile.setVideoEncoder(videoEncoder);
  profile.setVideoResolution(QStringLiteral("160x120"));
  profile.setVideoFrameRate(15);
  profile.setVideoBitrate(200);
  profile.setAudioEncoder(audioEncoder);
  profile.setAudioSampleRate(44100);
  profile.setAudioBitrate(64);
  profile.setAudioChannels(1);
  return profile;
}

QString tinyClip(const MediaFolder& folder, const QString& name) {
  const QString path = folder.path(name);
  const QString error = runFfmpeg({"-f", "lavfi", "-i", "testsrc=s=160x120:r=15:d=1", "-f", "lavfi", "-i",
                                   "sine=f=440:d=1", "-c:v", "mpeg4", "-c:a", "aac", path});
  EXPECT_TRUE(error.isEmpty()) << error.toStdString();
  return error.isEmpty() ? path : QString();
}

bool waitUntil(const std::function<bool()>& done) {
  QDeadlineTimer deadline(60000);
  while (!done()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
  }
  return true;
}

}  // namespace modeltest
