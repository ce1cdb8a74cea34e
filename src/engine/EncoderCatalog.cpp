#include "EncoderCatalog.h"

#include <array>

namespace engine {
namespace {

struct Alias {
  std::string_view name;
  std::string_view encoder;
  std::string_view profile;
  AVPixelFormat pixelFormat;
};

// The ProRes profiles by the four-character codes QuickTime files carry, and
// short names for encoders. Names whose FFmpeg encoder is experimental
// ("opus", "vorbis") go to the library encoder instead.
constexpr std::array<Alias, 11> kAliases{{
    {"apco", "prores_ks", "proxy", AV_PIX_FMT_YUV422P10},
    {"apcs", "prores_ks", "lt", AV_PIX_FMT_YUV422P10},
    {"apcn", "prores_ks", "standard", AV_PIX_FMT_YUV422P10},
    {"apch", "prores_ks", "hq", AV_PIX_FMT_YUV422P10},
    {"ap4h", "prores_ks", "4444", AV_PIX_FMT_YUV444P10},
    {"x264", "libx264", "", AV_PIX_FMT_NONE},
    {"x265", "libx265", "", AV_PIX_FMT_NONE},
    {"xvid", "libxvid", "", AV_PIX_FMT_NONE},
    {"mp3", "libmp3lame", "", AV_PIX_FMT_NONE},
    {"opus", "libopus", "", AV_PIX_FMT_NONE},
    {"vorbis", "libvorbis", "", AV_PIX_FMT_NONE},
}};

const AVCodec* encoderNamed(std::string_view name, AVMediaType type) {
  const AVCodec* encoder = avcodec_find_encoder_by_name(std::string(name).c_str());
  return encoder != nullptr && encoder->type == type ? encoder : nullptr;
}

}  // namespace

EncoderChoice findEncoder(std::string_view name, AVMediaType type) {
  if (name.empty()) return {};
  for (const Alias& alias : kAliases) {
    if (alias.name == name) return {encoderNamed(alias.encoder, type), std::string(alias.profile), alias.pixelFormat};
  }
  if (const AVCodec* encoder = encoderNamed(name, type)) return {encoder, {}, AV_PIX_FMT_NONE};
  const AVCodecDescriptor* codec = avcodec_descriptor_get_by_name(std::string(name).c_str());
  if (codec == nullptr || codec->type != type) return {};
  return {avcodec_find_encoder(codec->id), {}, AV_PIX_FMT_NONE};
}

}  // namespace engine
