// videoconverter profiles: lists the profile catalogue by group with each
// profile's identifier, name, extension and default encoders. Problems met
// while reading the catalogue go to standard error and make the exit code 1.

#include <QTextStream>

#include "Commands.h"
#include "CommonClass/StandardPaths.h"
#include "Profile/KMVProfileCatalog.h"

namespace {

QString encoderSummary(const KMVProfileDataInfo& profile) {
  const QString video = profile.defaultChoice(KMVProfileDataInfo::kVideoCodec).value_or(QString());
  const QString audio = profile.defaultChoice(KMVProfileDataInfo::kAudioCodec).value_or(QString());
  QStringList parts;
  if (!video.isEmpty()) parts.append(QStringLiteral("video %1").arg(video));
  if (!audio.isEmpty()) parts.append(QStringLiteral("audio %1").arg(audio));
  return parts.join(QStringLiteral(", "));
}

}  // namespace

int runProfilesCommand(const QStringList& arguments) {
  QTextStream out(stdout);
  QTextStream err(stderr);
  if (!arguments.isEmpty()) {
    err << "profiles takes no arguments" << Qt::endl;
    return 2;
  }
  KMVProfileCatalog& catalog = KMVProfileCatalog::sharedCatalog();
  const QStringList problems = catalog.loadFolder(StandardPaths::pathForResource(QStringLiteral("profile")));
  for (const QString& group : catalog.groups()) {
    out << (group.isEmpty() ? QStringLiteral("(no group)") : group) << Qt::endl;
    for (const KMVProfileCatalog::Entry& profile : catalog.profilesInGroup(group)) {
      out << QStringLiteral("  %1  %2 %3 %4")
                 .arg(profile->identifier)
                 .arg(profile->DisplayName, -26)
                 .arg(QLatin1Char('.') + profile->ExtName, -6)
                 .arg(encoderSummary(*profile))
          << Qt::endl;
    }
  }
  for (const QString& problem : problems) err << problem << Qt::endl;
  return problems.isEmpty() ? 0 : 1;
}
