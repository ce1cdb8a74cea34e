// The profile catalogue: every profile read from the catalogue folder, in
// groups, and the profile currently selected. Used on the main thread.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

#include "Profile/KMVProfileDataInfo.h"

class KMVProfileCatalog {
 public:
  using Entry = std::shared_ptr<const KMVProfileDataInfo>;

  static KMVProfileCatalog& sharedCatalog();

  // Replaces the catalogue by the profiles of every .xml file of `folder`,
  // read in file-name order. A profile whose name or identifier was already
  // read is left out. Returns what was wrong ("<file>: <problem>"); what
  // could be read is kept.
  QStringList loadFolder(const QString& folder);

  const QList<Entry>& profiles() const { return profiles_; }
  // Group names in catalogue order.
  QStringList groups() const;
  QList<Entry> profilesInGroup(const QString& group) const;
  Entry profileNamed(const QString& displayName) const;
  Entry profileWithIdentifier(int32_t identifier) const;

  // Selects the profile of that name; false (selection unchanged) when the
  // catalogue has none.
  bool selectProfile(const QString& displayName);
  Entry selectedProfile() const { return selected_; }

 private:
  QList<Entry> profiles_;
  Entry selected_;
};
