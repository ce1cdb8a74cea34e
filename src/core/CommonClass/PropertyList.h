// Property lists (binary or XML) to and from Qt values: dictionaries are
// QVariantMap, arrays QVariantList, data QByteArray, strings QString,
// integers qint64, reals double, booleans bool, dates QDateTime.
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

namespace PropertyList {

// nullopt when the bytes are not a property list.
std::optional<QVariant> fromData(const QByteArray& data);
// nullopt when the file is missing, unreadable or not a property list.
std::optional<QVariant> readFile(const QString& path);
// The value as a binary property list; types it cannot hold are skipped.
QByteArray toBinary(const QVariant& value);

}  // namespace PropertyList
