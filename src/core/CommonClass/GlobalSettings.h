// Process-wide settings: filled once by the start-up sequence, read directly
// everywhere, written back to Config.xml at termination.
#pragma once

#include <QByteArray>
#include <QString>

extern QString kProductName;            // display name, from the ProductInfo archive
extern QString kProfileName;            // output profile selected last
extern QString DefOutputPath;           // default output folder of conversions
extern QByteArray DefOutputPathBookMark;  // access bookmark of the output folder (empty = none)
extern QString DefInputPath;            // folder the add-files panel opens in
extern QString photoOutputPath;         // folder for preview snapshots
extern QByteArray photoOutputPathBookMark;  // access bookmark of the snapshot folder
extern QString photoOutputFormat;       // image extension of snapshots
extern bool isAutoUpdates;              // background update check at start
extern QString sysTmpPath;              // fixed scratch folder, also the log folder
extern QString videoImagePath;          // thumbnails taken from media files
extern QString sharedMemoryPath;        // this run's temporary folder

namespace GlobalSettings {

// The maker's folder below the user's movies folder.
inline constexpr const char* kMakerFolderName = "Palvinor Studio";

// The application's name among the maker's programs: its user defaults and
// private folders are filed under the maker's name and this one.
inline constexpr const char* kApplicationName = "VideoConverter";

// The user's movies folder (~/Videos on most desktops).
QString moviesFolder();
// moviesFolder() + "/Palvinor Studio".
QString makerFolder();
// The built-in values the settings have before Config.xml is read.
void resetToDefaults();

}  // namespace GlobalSettings
