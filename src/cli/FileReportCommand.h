// The shape of the commands that report on each file given (probe, tags):
// the headless start-up, one report a file as text rows or, with --json, as
// one JSON array, and exit code 1 when any file failed, 2 without files.
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QTextStream>

#include "Action/ApplicationLifecycle.h"

template <class Report>
struct FileReportCommand {
  const char* name;
  Report (*read)(const QString& path);
  bool (*failed)(const Report& report);
  QJsonObject (*toJson)(const Report& report);
  void (*printText)(QTextStream& out, QTextStream& err, const Report& report);

  int run(const QStringList& arguments) const {
    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList files = arguments;
    const bool json = files.removeAll(QStringLiteral("--json")) > 0;
    if (files.isEmpty()) {
      err << "Usage: videoconverter " << name << " FILE... [--json]" << Qt::endl;
      return 2;
    }

    MainWindowShell headless;
    ApplicationLifecycle::startUp(headless);
    QJsonArray reports;
    bool anyFailed = false;
    for (const QString& file : files) {
      const Report report = read(file);
      anyFailed = anyFailed || failed(report);
      if (json) {
        reports.append(toJson(report));
      } else {
        printText(out, err, report);
      }
    }
    if (json) out << QJsonDocument(reports).toJson(QJsonDocument::Indented) << Qt::flush;
    ApplicationLifecycle::applicationShouldTerminate(headless);
    return anyFailed ? 1 : 0;
  }
};
