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
