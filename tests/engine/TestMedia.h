// Media files for the engine's tests, made by the ffmpeg command: small clips
// of every container the converter meets, generated on first use and kept in
// the build folder for the next test process.
#pragma once

#include <string>

namespace enginetest {

// Path of the named sample ("clip.mp4", "two-audio.mkv", ...); fails the
// calling test when ffmpeg cannot make it.
std::string sample(const std::string& name);

// A folder private to this test process, removed when it exits.
std::string scratchFolder();

// A copy of the first part of a file, as a download cut short leaves it, in the scratch folder.
std::string firstBytesOf(const std::string& source, double fraction, const std::string& name);

}  // namespace enginetest
