#include "ASIHeaderFields.h"

void ASIHeaderFields::setValue(const QString& name, const QString& value) {
  const qsizetype index = indexOf(name);
  if (index < 0) {
    fields_.append({name, value});
  } else {
    fields_[index].second = value;
  }
}

void ASIHeaderFields::appendValue(const QString& name, const QString& value) {
  const qsizetype index = indexOf(name);
  if (index < 0) {
    fields_.append({name, value});
  } else {
    fields_[index].second += QStringLiteral(", ") + value;
  }
}

void ASIHeaderFields::remove(const QString& name) {
  const qsizetype index = indexOf(name);
  if (index >= 0) fields_.removeAt(index);
}

bool ASIHeaderFields::contains(const QString& name) const { return indexOf(name) >= 0; }

QString ASIHeaderFields::value(const QString& name) const {
  const qsizetype index = indexOf(name);
  return index < 0 ? QString() : fields_[index].second;
}

qsizetype ASIHeaderFields::indexOf(const QString& name) const {
  for (qsizetype i = 0; i < fields_.size(); ++i) {
    if (fields_[i].first.compare(name, Qt::CaseInsensitive) == 0) return i;
  }
  return -1;
}
