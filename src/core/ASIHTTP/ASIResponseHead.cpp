#include "ASIResponseHead.h"

bool ASIResponseHead::addLine(QByteArrayView rawLine) {
  const QString line =
      QString::fromLatin1(rawLine.data(), rawLine.size()).remove(QLatin1Char('\r')).remove(QLatin1Char('\n'));
  if (line.isEmpty()) {
    if (statusCode_ == 0) return false;
    if (statusCode_ >= 100 && statusCode_ < 200) {
      *this = ASIResponseHead();
      return false;
    }
    return true;
  }
  if (line.startsWith(QLatin1String("HTTP/"))) {
    *this = ASIResponseHead();
    readStatusLine(line);
    return false;
  }
  if ((line.front() == QLatin1Char(' ') || line.front() == QLatin1Char('\t')) && !lastFieldName_.isEmpty()) {
    // A folded line continues the value of the field before it.
    headers_.setValue(lastFieldName_, headers_.value(lastFieldName_) + QLatin1Char(' ') + line.trimmed());
    return false;
  }
  const qsizetype colon = line.indexOf(QLatin1Char(':'));
  if (colon <= 0) return false;
  lastFieldName_ = line.left(colon).trimmed();
  headers_.appendValue(lastFieldName_, line.mid(colon + 1).trimmed());
  return false;
}

void ASIResponseHead::readStatusLine(const QString& line) {
  const QStringList parts = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  httpVersion_ = parts.value(0).mid(5);
  bool numeric = false;
  const int code = parts.value(1).toInt(&numeric);
  statusCode_ = numeric ? code : 0;
}
