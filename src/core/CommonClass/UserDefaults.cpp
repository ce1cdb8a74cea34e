#include "UserDefaults.h"

#include "CommonClass/GlobalSettings.h"

UserDefaults::UserDefaults()
    : settings_(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                            QLatin1String(GlobalSettings::kMakerFolderName),
                                            QLatin1String(GlobalSettings::kApplicationName))) {}

UserDefaults& UserDefaults::standardUserDefaults() {
  static UserDefaults defaults;
  return defaults;
}

QVariant UserDefaults::objectForKey(const QString& key) const {
  QMutexLocker locker(&mutex_);
  return settings_->value(key);
}

QString UserDefaults::stringForKey(const QString& key) const {
  const QVariant value = objectForKey(key);
  return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

QByteArray UserDefaults::dataForKey(const QString& key) const {
  const QVariant value = objectForKey(key);
  return value.typeId() == QMetaType::QByteArray ? value.toByteArray() : QByteArray();
}

bool UserDefaults::boolForKey(const QString& key) const { return objectForKey(key).toBool(); }

void UserDefaults::setObject(const QVariant& value, const QString& key) {
  QMutexLocker locker(&mutex_);
  // Setting what is stored already would rewrite the file for nothing.
  if (settings_->contains(key) && settings_->value(key) == value) return;
  settings_->setValue(key, value);
}

void UserDefaults::removeObjectForKey(const QString& key) {
  QMutexLocker locker(&mutex_);
  settings_->remove(key);
}

bool UserDefaults::synchronize() {
  QMutexLocker locker(&mutex_);
  settings_->sync();
  return settings_->status() == QSettings::NoError;
}
