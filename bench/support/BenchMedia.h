// Media for the benchmarks: ten kinds of short clips and songs made by the
// ffmpeg command, each copied under ten names.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace benchmedia {

// Runs a program with its output thrown away; returns its exit status.
int runQuietly(const std::vector<std::string>& arguments);

// 100 files in `folder`; empty when ffmpeg could not make them.
std::vector<std::filesystem::path> generateFiles(const std::filesystem::path& folder);

}  // namespace benchmedia
