// The subcommands of the command line. Each takes the arguments after its
// name and returns the process exit code.
#pragma once

#include <QStringList>

int runInfoCommand(const QStringList& arguments);
int runProbeCommand(const QStringList& arguments);
int runProfilesCommand(const QStringList& arguments);
int runFetchCommand(const QStringList& arguments);
int runConvertCommand(const QStringList& arguments);
int runTagsCommand(const QStringList& arguments);
int runAnalyzeCommand(const QStringList& arguments);
