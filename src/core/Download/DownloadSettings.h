// The process-wide download settings, shared by the download window, its
// items and the download list file.
#pragma once

#include <QString>

#include <cstdint>

// The quality rule of the file chosen from a page: 0 highest, 1 middle, 2
// lowest. 0 at every start: the value saved with the list is not read back.
extern int32_t qualityParam;
// The download mode; never changed, only saved with the list.
extern int32_t downloadModel;
// The folder downloads are saved in.
extern QString savePath;

namespace DownloadSettings {

// The user default that holds the folder chosen in the settings sheet, read
// at start. The list's saves write "SavePath" instead, which nothing reads.
inline constexpr const char* kSavePathDefault = "DownloadSavePath";

// The folder when none was chosen: "Download" in the maker's folder below
// the user's movies folder.
QString defaultSavePath();
// The folder at start: the chosen one, else the default.
QString startSavePath();

}  // namespace DownloadSettings
