// The name under which an audio stream is offered to the user, such as
// "eng AAC 5.1": language, title, codec and channel layout.
#pragma once

#include <string>

extern "C" {
#include <libavformat/avformat.h>
}

namespace engine {

std::string audioStreamName(const AVStream& stream);

}  // namespace engine
