// The profile selector: a menu of the catalogue's groups, each a submenu of
// its profiles with their pictures; the item's own profile is ticked.
#pragma once

#include <QMenu>

#include "Profile/KMVProfileCatalog.h"

class ProfileMenu : public QMenu {
  Q_OBJECT

 public:
  explicit ProfileMenu(const KMVProfileCatalog& catalog, QWidget* parent = nullptr);
  // Ticks the profile named `displayName` and nothing else.
  void markCurrent(const QString& displayName);

 signals:
  void profileChosen(const KMVProfileCatalog::Entry& entry);
};
