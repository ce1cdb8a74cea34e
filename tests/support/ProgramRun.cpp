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

QProcessEnvironment homeEnvironment(const QString& home) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("HOME"), home);
  environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
  environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share"));
  environment.insert(QStringLiteral("XDG_CACHE_HOME"), home + QStringLiteral("/.cache"));
  return environment;
}

ProgramResult runProgramAs(const QProcessEnvironment& environment, const QStringList& arguments, qint64 writableBytes) {
  QProcess process;
  process.setProcessEnvironment(environment);
  if (writableBytes < 0) {
    process.start(programPath(), arguments);
  } else {
    // The shell's file size limit (in 512-byte blocks) makes writes fail with
    // EFBIG; ignoring SIGXFSZ keeps the program alive to handle that.
    const QString script = QStringLiteral("trap '' XFSZ; ulimit -f %1; exec \"$0\" \"$@\"").arg(writableBytes / 512);
    process.start(QStringLiteral("sh"), QStringList{"-c", script, programPath()} + arguments);
  }
  return finishProgram(process);
}
