// List items made the way the program makes them: generated files added to
// the main list through the real probe, and profiles from the shipped
// catalogue.
#pragma once

#include <QString>
#include <QStringList>

#include "ValueObject/NodeInfo.h"
#include "ValueObject/ProfileSettingInfo.h"
#include "ValueObject/UIInfoDB.h"

namespace modeltest {

// Adds the files to the main list of `db` and waits until they are read,
// with the scratch and thumbnail folders inside `scratchFolder`; the nodes
// made, in order.
NodeInfo::List addToList(UIInfoDB& db, const QStringList& paths, const QString& scratchFolder);

// The profile an item gets when the shipped catalogue's `displayName` is picked.
ProfileSettingInfo shippedProfile(const QString& displayName);

// A fresh application state: thumbnails go below `scratchFolder`, the
// engine's scratch files into `engineFolder`.
void startWithEmptyList(const QString& scratchFolder, const QString& engineFolder);
// Resets the application state again.
void endWithEmptyList();

}  // namespace modeltest
