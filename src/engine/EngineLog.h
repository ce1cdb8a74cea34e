// The engine's own log: one line per event on standard error, since the
// library has no access to the application's log file.
#pragma once

#include <string>
#include <string_view>

namespace engine {

// Writes "videoconverter: <message>" as one line; safe from any thread.
void logLine(std::string_view message);

// FFmpeg's text for one of its error codes.
std::string ffmpegErrorText(int errorCode);

}  // namespace engine
