// Runs the videoconverter program beside the test executable, as a user
// would, and collects what it printed.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

struct ProgramResult {
  int exitCode = -1;  // -1 when it crashed or did not finish in two minutes
  QString standardOutput;
  QString errorOutput;
};

QString programPath();
// Waits for a started program to end and collects its output.
ProgramResult finishProgram(QProcess& process);
ProgramResult runProgram(const QStringList& arguments, const QString& workingDirectory = QString());

// A user of their own: the program's configuration, data and caches below `home`.
QProcessEnvironment homeEnvironment(const QString& home);
// Runs the program in `environment`; with `writableBytes` >= 0, writing a
// file beyond that size fails as on a full disk.
ProgramResult runProgramAs(const QProcessEnvironment& environment, const QStringList& arguments,
                           qint64 writableBytes = -1);
