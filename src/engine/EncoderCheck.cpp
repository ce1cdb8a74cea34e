// What this build knows of codecs: VideoConverter_CheckEncoder, whether it can
// write a codec named by its four-character code as it appears in
// QuickTime-style containers, and VideoConverter_GetCodecName, the name of a
// codec the probe reports by number.
#include <cstring>

#include "videoconverter.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace {

// ProRes outputs are written with the encoder that offers every profile.
const AVCodec* encoderFor(AVCodecID codecId) {
  if (codecId == AV_CODEC_ID_PRORES) return avcodec_find_encoder_by_name("prores_ks");
  return avcodec_find_encoder(codecId);
}

}  // namespace

extern "C" int VideoConverter_CheckEncoder(const char* fourCharacterCode) {
  if (fourCharacterCode == nullptr || std::strlen(fourCharacterCode) != 4) return 0;
  const unsigned tag = MKTAG(fourCharacterCode[0], fourCharacterCode[1], fourCharacterCode[2], fourCharacterCode[3]);
  const AVCodecTag* const tables[] = {avformat_get_mov_video_tags(), nullptr};
  const AVCodecID codecId = av_codec_get_id(tables, tag);
  if (codecId == AV_CODEC_ID_NONE) return 0;
  return encoderFor(codecId) != nullptr ? 1 : 0;
}

extern "C" const char* VideoConverter_GetCodecName(int32_t codecId) {
  const AVCodecDescriptor* descriptor = avcodec_descriptor_get(static_cast<AVCodecID>(codecId));
  if (descriptor == nullptr) return "";
  return descriptor->long_name != nullptr ? descriptor->long_name : descriptor->name;
}
