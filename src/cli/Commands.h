// The subcommands of the command line. Each takes the arguments after its
// name and returns the process exit code.
#pragma once

#include <QStringList>

class TerminalAlertPresenter;

int runInfoCommand(const QStringList& arguments);
int runProbeCommand(const QStringList& arguments);
int runProfilesCommand(const QStringList& arguments);
int runFetchCommand(const QStringList& arguments);
// Questions of the run go to `alerts`, which --yes answers with their first button.
int runConvertCommand(const QStringList& arguments, TerminalAlertPresenter& alerts);
int runTagsCommand(const QStringList& arguments);
int runAnalyzeCommand(const QStringList& arguments);
// The usage text of analyze, with its options explained.
QString analyzeUsage();
int runDownloadCommand(const QStringList& arguments);
QString downloadUsage();
int runFrameCommand(const QStringList& arguments);
QString frameUsage();
