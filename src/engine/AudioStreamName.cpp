#include "AudioStreamName.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

extern "C" {
#include <libavcodec/codec_desc.h>
#include <libavutil/channel_layout.h>
}

namespace engine {
namespace {

std::string tagValue(const AVStream& stream, const char* key) {
  const AVDictionaryEntry* entry = av_dict_get(stream.metadata, key, nullptr, 0);
  return entry != nullptr ? entry->value : "";
}

std::string codecLabel(AVCodecID codecId) {
  const AVCodecDescriptor* descriptor = avcodec_descriptor_get(codecId);
  if (descriptor == nullptr) return "";
  std::string label = descriptor->name;
  // Every raw sample format reads the same to a user.
  if (label.starts_with("pcm_")) return "PCM";
  std::transform(label.begin(), label.end(), label.begin(), [](unsigned char c) { return std::toupper(c); });
  return label;
}

std::string layoutLabel(const AVChannelLayout& layout) {
  if (layout.nb_channels <= 0) return "";
  // Containers such as WAV often give only a channel count: name the usual layout for it.
  AVChannelLayout named{};
  if (layout.order == AV_CHANNEL_ORDER_UNSPEC) {
    av_channel_layout_default(&named, layout.nb_channels);
  } else if (av_channel_layout_copy(&named, &layout) < 0) {
    return "";
  }
  char text[64] = {};
  const int described = av_channel_layout_describe(&named, text, sizeof text);
  av_channel_layout_uninit(&named);
  return described < 0 ? "" : text;
}

}  // namespace

std::string audioStreamName(const AVStream& stream) {
  std::string language = tagValue(stream, "language");
  if (language == "und") language.clear();
  const std::vector<std::string> parts = {language, tagValue(stream, "title"), codecLabel(stream.codecpar->codec_id),
                                          layoutLabel(stream.codecpar->ch_layout)};
  std::string name;
  for (const std::string& part : parts) {
    if (part.empty()) continue;
    if (!name.empty()) name += ' ';
    name += part;
  }
  return name;
}

}  // namespace engine
