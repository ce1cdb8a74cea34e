// The application's log: one text file a day, no levels.
#pragma once

#include <QString>

class KMVLog {
 public:
  // Appends "yyyy-MM-dd HH:mm:ss<TAB>message<CR><LF>" to <folder>/<yyyyMMdd>.txt.
  // When the file cannot be opened a console line is printed and nothing else
  // happens. Takes no lock: concurrent callers may interleave lines.
  static void Log(const QString& message);

  // The folder of the daily files, "/tmp/VideoConverter/" unless changed.
  static QString folder();
  static void setFolder(const QString& folder);
};
