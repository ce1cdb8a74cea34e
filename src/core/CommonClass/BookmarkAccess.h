// Security-scoped folder bookmarks. Linux has no sandbox that needs them, so
// starting access does nothing and no bookmark is ever made; callers keep
// storing and passing bookmarks so that the settings keep their shape.
#pragma once

#include <QByteArray>
#include <QString>

namespace BookmarkAccess {

inline void startAccessPathWithData(const QByteArray& /*bookmark*/) {}
inline QByteArray bookmarkData(const QString& /*path*/) { return {}; }

}  // namespace BookmarkAccess
