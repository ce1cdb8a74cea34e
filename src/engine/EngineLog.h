// The engine's own log: one line per event on standard error, since the
// library has no access to the application's log file.
#pragma once

#include <string>
#include <string_view>

namespace engine {

// Writes "videoconverter: <message>" as one line; safe from any thread.
void logLine(std::string_view message);

// Silences FFmpeg's own messages: every failure is reported in one line in
// the engine's words instead. Safe to call often and from any thread.
void quietenLibraries();

// FFmpeg's text for one of its error codes.
std::string ffmpegErrorText(int errorCode);

}  // namespace engine
