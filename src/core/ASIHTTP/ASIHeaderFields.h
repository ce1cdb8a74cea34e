// HTTP header fields in the order they were added. Names are compared without
// regard to case; each name is held once.
#pragma once

#include <QList>
#include <QPair>
#include <QString>

class ASIHeaderFields {
 public:
  using Field = QPair<QString, QString>;

  // Sets `name` to `value`, replacing a field of the same name in its place.
  void setValue(const QString& name, const QString& value);
  // Adds `value` to a field of the same name as ", value", or adds the field.
  void appendValue(const QString& name, const QString& value);
  void remove(const QString& name);
  bool contains(const QString& name) const;
  // The value of `name`, or a null string.
  QString value(const QString& name) const;

  const QList<Field>& fields() const { return fields_; }
  bool isEmpty() const { return fields_.isEmpty(); }
  bool operator==(const ASIHeaderFields&) const = default;

 private:
  qsizetype indexOf(const QString& name) const;

  QList<Field> fields_;
};
