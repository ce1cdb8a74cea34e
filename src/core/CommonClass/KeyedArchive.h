// Keyed archiving of value objects as binary property lists: the root is a
// dictionary whose keys are the object's field names, plus "$class".
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

class KeyedArchiver {
 public:
  explicit KeyedArchiver(const QString& className);

  void encodeObject(const char* key, const QVariant& value);
  void encodeData(const char* key, const QByteArray& value) { encodeObject(key, value); }
  // The archive as binary property list bytes.
  QByteArray archivedData() const;

 private:
  QVariantMap root_;
};

class KeyedUnarchiver {
 public:
  // nullopt unless `data` is a property list whose root dictionary names
  // `className` under "$class".
  static std::optional<KeyedUnarchiver> open(const QByteArray& data, const QString& className);

  bool containsValueForKey(const char* key) const { return root_.contains(QLatin1String(key)); }
  QVariant decodeObject(const char* key) const { return root_.value(QLatin1String(key)); }
  // Missing keys and values of another type decode as empty.
  QByteArray decodeData(const char* key) const;

 private:
  explicit KeyedUnarchiver(QVariantMap root) : root_(std::move(root)) {}
  QVariantMap root_;
};
