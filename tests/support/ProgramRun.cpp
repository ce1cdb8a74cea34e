#include "ProgramRun.h"

#include <QCoreApplication>

QString programPath() { return QCoreApplication::applicationDirPath() + QStringLiteral("/videoconverter"); }

ProgramResult finishProgram(QProcess& process) {
  ProgramResult result;
  if (!process.waitForFinished(120000)) {
    process.kill();
    process.waitForFinished();
    result.errorOutput = QStringLiteral("did not finish");
    return result;
  }
  result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  result.standardOutput = QString::fromUtf8(process.readAllStandardOutput());
  result.errorOutput = QString::fromUtf8(process.readAllStandardError());
  return result;
}

ProgramResult runProgram(const QStringList& arguments, const QString& workingDirectory) {
  QProcess process;
  if (!workingDirectory.isEmpty()) process.setWorkingDirectory(workingDirectory);
  process.start(programPath(), arguments);
  return finishProgram(process);
}
