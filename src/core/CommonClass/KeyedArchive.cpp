#include "KeyedArchive.h"

#include "PropertyList.h"

namespace {
const QString kClassKey = QStringLiteral("$class");
}

KeyedArchiver::KeyedArchiver(const QString& className) { root_.insert(kClassKey, className); }

void KeyedArchiver::encodeObject(const char* key, const QVariant& value) { root_.insert(QLatin1String(key), value); }

QByteArray KeyedArchiver::archivedData() const { return PropertyList::toBinary(root_); }

std::optional<KeyedUnarchiver> KeyedUnarchiver::open(const QByteArray& data, const QString& className) {
  const auto root = PropertyList::fromData(data);
  if (!root || root->typeId() != QMetaType::QVariantMap) return std::nullopt;
  QVariantMap map = root->toMap();
  if (map.value(kClassKey).toString() != className) return std::nullopt;
  return KeyedUnarchiver(std::move(map));
}

QByteArray KeyedUnarchiver::decodeData(const char* key) const {
  const QVariant value = decodeObject(key);
  return value.typeId() == QMetaType::QByteArray ? value.toByteArray() : QByteArray();
}
