// List items made the way the program makes them: generated files added to
// the main list through the real probe, and profiles from the shipped
// catalogue or small ones for fast conversions.
#pragma once

#include <QString>
#include <QStringList>

#include "Profile/KMVProfileCatalog.h"
#include "ValueObject/NodeInfo.h"
#include "ValueObject/ProfileSettingInfo.h"
#include "ValueObject/UIInfoDB.h"

namespace modeltest {

// Adds the files to the main list of `db` and waits until they are read,
// with the scratch and thumbnail folders inside `scratchFolder`; the nodes
// made, in order.
NodeInfo::List addToList(UIInfoDB& db, const QStringList& paths, const QString& scratchFolder);

// The catalogue as shipped, loaded once.
const KMVProfileCatalog& shippedCatalog();
// The profile an item gets when the shipped catalogue's `displayName` is picked.
ProfileSettingInfo shippedProfile(const QString& displayName);
// A small, fast output: mpeg4 and AAC in mp4 at 160x120; the container and
// encoders can be changed.
ProfileSettingInfo smallProfile(const QString& format = QStringLiteral("mp4"),
                                const QString& extension = QStringLiteral("mp4"),
                                const QString& videoEncoder = QStringLiteral("mpeg4"),
                                const QString& audioEncoder = QStringLiteral("aac"));

// A node of `type` with the output name `name`, outside any tree.
NodeInfo::Ptr namedNode(const QString& name, int32_t type = NodeInfo::kTypeFile);
// The output names of the nodes, in order.
QStringList outputNames(const NodeInfo::List& nodes);

// A fresh application state: thumbnails go below `scratchFolder`, the
// engine's scratch files into `engineFolder`. (TestEnvironment resets it again.)
void startWithEmptyList(const QString& scratchFolder, const QString& engineFolder);

}  // namespace modeltest
