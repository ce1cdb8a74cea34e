#include "KMVProfileCatalog.h"

#include <QDir>

#include "Profile/ProfileCatalogReader.h"

KMVProfileCatalog& KMVProfileCatalog::sharedCatalog() {
  static KMVProfileCatalog catalog;
  return catalog;
}

QStringList KMVProfileCatalog::loadFolder(const QString& folder) {
  profiles_.clear();
  selected_.reset();
  const QDir dir(folder);
  if (!dir.exists()) return {QStringLiteral("%1: the profile folder does not exist").arg(folder)};

  QStringList errors;
  const QStringList files = dir.entryList({QStringLiteral("*.xml")}, QDir::Files | QDir::Readable, QDir::Name);
  if (files.isEmpty()) errors.append(QStringLiteral("%1: the profile folder holds no .xml file").arg(folder));
  for (const QString& file : files) {
    ProfileCatalogFile read = ProfileCatalogReader::readFile(dir.filePath(file));
    errors += read.errors;
    for (KMVProfileDataInfo& profile : read.profiles) {
      if (profileNamed(profile.DisplayName) || profileWithIdentifier(profile.identifier)) {
        errors.append(QStringLiteral("%1: profile %2 (%3) repeats a name or identifier read before; left out")
                          .arg(file, profile.DisplayName)
                          .arg(profile.identifier));
        continue;
      }
      profiles_.append(std::make_shared<const KMVProfileDataInfo>(std::move(profile)));
    }
  }
  return errors;
}

QStringList KMVProfileCatalog::groups() const {
  QStringList names;
  for (const Entry& profile : profiles_) {
    if (!names.contains(profile->group)) names.append(profile->group);
  }
  return names;
}

QList<KMVProfileCatalog::Entry> KMVProfileCatalog::profilesInGroup(const QString& group) const {
  QList<Entry> members;
  for (const Entry& profile : profiles_) {
    if (profile->group == group) members.append(profile);
  }
  return members;
}

KMVProfileCatalog::Entry KMVProfileCatalog::profileNamed(const QString& displayName) const {
  for (const Entry& profile : profiles_) {
    if (profile->DisplayName == displayName) return profile;
  }
  return nullptr;
}

KMVProfileCatalog::Entry KMVProfileCatalog::profileWithIdentifier(int32_t identifier) const {
  for (const Entry& profile : profiles_) {
    if (profile->identifier == identifier) return profile;
  }
  return nullptr;
}

bool KMVProfileCatalog::selectProfile(const QString& displayName) {
  Entry profile = profileNamed(displayName);
  if (!profile) return false;
  selected_ = std::move(profile);
  return true;
}
