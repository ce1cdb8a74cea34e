// The status line and header fields of a response, read line by line as the
// transport hands the raw lines over.
#pragma once

#include <QByteArrayView>
#include <QString>

#include "ASIHeaderFields.h"

class ASIResponseHead {
 public:
  // Takes one raw line, line end included. True when the line ends a final
  // head; interim (1xx) heads are dropped and the next one is read.
  bool addLine(QByteArrayView line);

  // 0 until a status line has been read.
  int statusCode() const { return statusCode_; }
  // "1.1", "1.0" or "2".
  const QString& httpVersion() const { return httpVersion_; }
  const ASIHeaderFields& headers() const { return headers_; }

 private:
  void readStatusLine(const QString& line);

  int statusCode_ = 0;
  QString httpVersion_;
  ASIHeaderFields headers_;
  QString lastFieldName_;
};
