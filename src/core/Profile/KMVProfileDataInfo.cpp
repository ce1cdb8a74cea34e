#include "KMVProfileDataInfo.h"

std::optional<QString> KMVProfileOption::defaultChoice() const {
  const QStringList list = choices();
  const int index = defaultIndex();
  if (index < 0 || index >= list.size()) return std::nullopt;
  return list.at(index).trimmed();
}

const KMVProfileOption* KMVProfileDataInfo::option(const char* key) const {
  const auto found = subs.constFind(QLatin1String(key));
  return found == subs.constEnd() ? nullptr : &found.value();
}

std::optional<QString> KMVProfileDataInfo::defaultChoice(const char* key) const {
  const KMVProfileOption* item = option(key);
  return item ? item->defaultChoice() : std::nullopt;
}
