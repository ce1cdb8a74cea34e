// The media file extensions the main list accepts, and the four filters of
// the add-files panel.
#pragma once

#include <QString>
#include <QStringList>

class MediaFileTypes {
 public:
  // In the panel's order, upper case.
  static const QStringList& videoExtensions();
  static const QStringList& audioExtensions();
  // Video then audio, each in upper and then lower case.
  static QStringList acceptedExtensions();

  // "All Support Files", "Supported Video Files", "Support Audio Files", "All File(*.*)".
  static const QStringList& filterNames();
  // The extensions filter `index` allows, in both cases; empty (no
  // restriction) for an index outside 0 ... 2.
  static QStringList configOpenAllowFileWithIndex(int index);
  static bool isAccepted(const QString& path);
};
