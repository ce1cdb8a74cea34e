// The options window's logic: the snapshot format and folder, the output
// folder and the automatic update check, read from the process-wide
// settings and stored back into them and into Config.xml.
#pragma once

#include <QString>
#include <QStringList>

struct OptionValues {
  QString photoOutputFormat;
  QString photoOutputPath;
  QString outputPath;
  bool autoUpdates = false;
};

struct OptionOutcome {
  bool stored = false;
  QString message;  // why not stored, or that storing could not be saved; empty when all went well
};

class OptionFormAction {
 public:
  // The picture types a snapshot can be saved as.
  static QStringList pictureFormats();
  static OptionValues current();
  // Checks that both folders can be made and written, then stores the
  // values and saves Config.xml. A refused folder changes nothing; a
  // configuration that cannot be saved keeps the values for this run.
  static OptionOutcome apply(const OptionValues& values);
};
