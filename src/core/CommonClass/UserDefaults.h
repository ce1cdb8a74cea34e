// The user defaults: a per-user key-value store kept by QSettings in
// ~/.config/Palvinor Studio/VideoConverter.conf.
#pragma once

#include <QMutex>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <memory>

class UserDefaults {
 public:
  static UserDefaults& standardUserDefaults();

  QVariant objectForKey(const QString& key) const;
  // Empty when missing or not a string.
  QString stringForKey(const QString& key) const;
  // Empty when missing or not data.
  QByteArray dataForKey(const QString& key) const;
  bool boolForKey(const QString& key) const;
  void setObject(const QVariant& value, const QString& key);
  void removeObjectForKey(const QString& key);
  // Writes pending changes to disk and reads changes made by others.
  bool synchronize();

 private:
  UserDefaults();
  mutable QMutex mutex_;  // QSettings objects are not to be shared between threads unguarded
  std::unique_ptr<QSettings> settings_;
};
