#include "EncoderSetup.h"

#include <algorithm>
#include <cstdlib>

#include "EncoderCatalog.h"
#include "EngineLog.h"
#include "RecordText.h"

extern "C" {
#include <libavutil/opt.h>
}

namespace engine {
namespace {

constexpr int kDefaultQuality = 27;

EncoderChoice encoderFor(const std::string& name, const AVOutputFormat& container, AVMediaType type,
                         std::string& error) {
  const char* kind = type == AVMEDIA_TYPE_VIDEO ? "video" : "audio";
  if (!name.empty()) {
    const EncoderChoice choice = findEncoder(name, type);
    if (choice.encoder == nullptr) error = std::string("there is no ") + kind + " encoder named \"" + name + "\"";
    return choice;
  }
  const AVCodecID codec = av_guess_codec(&container, nullptr, nullptr, nullptr, type);
  EncoderChoice choice{codec != AV_CODEC_ID_NONE ? avcodec_find_encoder(codec) : nullptr, {}, AV_PIX_FMT_NONE};
  if (choice.encoder == nullptr) {
    error = std::string("the ") + container.name + " format has no default " + kind + " encoder";
  }
  return choice;
}

AVPixelFormat pixelFormatFor(const EncoderChoice& choice) {
  if (choice.pixelFormat != AV_PIX_FMT_NONE) return choice.pixelFormat;
  const AVCodec& encoder = *choice.encoder;
  // Motion JPEG is made of full-range pictures; the filters convert to that range.
  if (encoder.id == AV_CODEC_ID_MJPEG) return AV_PIX_FMT_YUVJ420P;
  if (encoder.pix_fmts == nullptr) return AV_PIX_FMT_YUV420P;
  for (const AVPixelFormat* format = encoder.pix_fmts; *format != AV_PIX_FMT_NONE; ++format) {
    if (*format == AV_PIX_FMT_YUV420P) return *format;
  }
  return avcodec_find_best_pix_fmt_of_list(encoder.pix_fmts, AV_PIX_FMT_YUV420P, 0, nullptr);
}

AVRational nearestSupportedRate(const AVCodec& encoder, AVRational rate) {
  if (encoder.supported_framerates == nullptr) return rate;
  return encoder.supported_framerates[av_find_nearest_q_idx(rate, encoder.supported_framerates)];
}

// A bitrate, or else constant quality: the quality value is a CRF for
// encoders that have one, and otherwise a fixed quantiser derived from it.
void setRateControl(AVCodecContext& context, const OutputParam& output) {
  if (output.m_VideoBitrate > 0) {
    context.bit_rate = static_cast<int64_t>(output.m_VideoBitrate) * 1000;
    return;
  }
  const int quality = output.m_VideoQuality > 0 ? output.m_VideoQuality : kDefaultQuality;
  context.bit_rate = 0;
  if (context.priv_data != nullptr && av_opt_find(context.priv_data, "crf", nullptr, 0, 0) != nullptr) {
    av_opt_set_int(context.priv_data, "crf", quality, 0);
    return;
  }
  context.flags |= AV_CODEC_FLAG_QSCALE;
  context.global_quality = FF_QP2LAMBDA * std::clamp(quality - 23, 1, 31);
}

void prepareForContainer(AVCodecContext& context, const AVCodec& encoder, const AVOutputFormat& container) {
  if (container.flags & AVFMT_GLOBALHEADER) context.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (encoder.capabilities & AV_CODEC_CAP_EXPERIMENTAL) context.strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
  context.thread_count = 0;  // as many as the machine has
}

CodecContextPtr opened(CodecContextPtr context, const AVCodec& encoder, std::string& error) {
  const int result = avcodec_open2(context.get(), &encoder, nullptr);
  if (result >= 0) return context;
  error = std::string("the encoder ") + encoder.name + " refused the settings: " + ffmpegErrorText(result);
  return nullptr;
}

int nearestSampleRate(const AVCodec& encoder, int wanted) {
  if (encoder.supported_samplerates == nullptr) return wanted;
  int best = encoder.supported_samplerates[0];
  for (const int* rate = encoder.supported_samplerates; *rate != 0; ++rate) {
    if (std::abs(*rate - wanted) < std::abs(best - wanted)) best = *rate;
  }
  return best;
}

// The source's format, planar or packed, saves a conversion; otherwise the encoder's own first choice.
AVSampleFormat sampleFormatFor(const AVCodec& encoder, AVSampleFormat source) {
  if (encoder.sample_fmts == nullptr) return source != AV_SAMPLE_FMT_NONE ? source : AV_SAMPLE_FMT_S16;
  for (AVSampleFormat wanted : {source, av_get_planar_sample_fmt(source), av_get_packed_sample_fmt(source)}) {
    for (const AVSampleFormat* offered = encoder.sample_fmts; *offered != AV_SAMPLE_FMT_NONE; ++offered) {
      if (wanted != AV_SAMPLE_FMT_NONE && *offered == wanted) return wanted;
    }
  }
  return encoder.sample_fmts[0];
}

AVChannelLayout layoutFor(const AVCodec& encoder, int channels) {
  AVChannelLayout layout{};
  av_channel_layout_default(&layout, channels);
  if (encoder.ch_layouts == nullptr) return layout;
  for (const AVChannelLayout* offered = encoder.ch_layouts; offered->nb_channels != 0; ++offered) {
    if (av_channel_layout_compare(offered, &layout) == 0) return layout;
  }
  for (const AVChannelLayout* offered = encoder.ch_layouts; offered->nb_channels != 0; ++offered) {
    if (offered->nb_channels == channels) return *offered;
  }
  return encoder.ch_layouts[0];
}

}  // namespace

const AVOutputFormat* outputFormatFor(const OutputParam& output) {
  const std::string name = fieldText(output.m_Format);
  const std::string path = fieldText(output.m_FileName);
  if (!name.empty()) {
    if (const AVOutputFormat* format = av_guess_format(name.c_str(), nullptr, nullptr)) return format;
  }
  return av_guess_format(nullptr, path.c_str(), nullptr);
}

bool containerCarries(const AVOutputFormat& container, AVMediaType type) {
  return av_guess_codec(&container, nullptr, nullptr, nullptr, type) != AV_CODEC_ID_NONE;
}

AVRational outputFrameRate(const OutputParam& output, AVRational sourceRate) {
  if (output.m_FrameRateNum > 0 && output.m_FrameRateDen > 0) return {output.m_FrameRateNum, output.m_FrameRateDen};
  if (sourceRate.num > 0 && sourceRate.den > 0) return sourceRate;
  return {30, 1};
}

CodecContextPtr openVideoEncoder(const OutputParam& output, const AVOutputFormat& container,
                                 const VideoEncoderRequest& request, std::string& error) {
  const EncoderChoice choice = encoderFor(fieldText(output.m_VideoEncoder), container, AVMEDIA_TYPE_VIDEO, error);
  const AVCodec* encoder = choice.encoder;
  if (encoder == nullptr) return nullptr;
  CodecContextPtr context(avcodec_alloc_context3(encoder));
  if (context == nullptr) {
    error = "out of memory";
    return nullptr;
  }
  context->width = request.width;
  context->height = request.height;
  context->sample_aspect_ratio = {1, 1};
  context->pix_fmt = pixelFormatFor(choice);
  context->framerate = nearestSupportedRate(*encoder, request.frameRate);
  context->time_base = av_inv_q(context->framerate);
  setRateControl(*context, output);
  prepareForContainer(*context, *encoder, container);
  if (!choice.profile.empty()) av_opt_set(context->priv_data, "profile", choice.profile.c_str(), 0);
  // This encoder prints its own progress unless told otherwise.
  if (av_opt_find(context->priv_data, "x265-params", nullptr, 0, 0) != nullptr) {
    av_opt_set(context->priv_data, "x265-params", "log-level=error", 0);
  }
  if (request.keyframesOnRequest && av_opt_find(context->priv_data, "forced-idr", nullptr, 0, 0) != nullptr) {
    av_opt_set_int(context->priv_data, "forced-idr", 1, 0);
  }
  return opened(std::move(context), *encoder, error);
}

CodecContextPtr openAudioEncoder(const OutputParam& output, const AVOutputFormat& container,
                                 const AudioEncoderRequest& request, std::string& error) {
  const AVCodec* encoder = encoderFor(fieldText(output.m_AudioEncoder), container, AVMEDIA_TYPE_AUDIO, error).encoder;
  if (encoder == nullptr) return nullptr;
  CodecContextPtr context(avcodec_alloc_context3(encoder));
  if (context == nullptr) {
    error = "out of memory";
    return nullptr;
  }
  const int wantedRate = output.m_SampleRate > 0  ? output.m_SampleRate
                         : request.sampleRate > 0 ? request.sampleRate
                                                  : 44100;
  const int wantedChannels = output.m_Channels > 0 ? output.m_Channels : std::clamp(request.channels, 1, 2);
  context->sample_rate = nearestSampleRate(*encoder, wantedRate);
  context->sample_fmt = sampleFormatFor(*encoder, request.sampleFormat);
  context->ch_layout = layoutFor(*encoder, wantedChannels);
  context->time_base = {1, context->sample_rate};
  if (output.m_AudioBitrate > 0) context->bit_rate = static_cast<int64_t>(output.m_AudioBitrate) * 1000;
  prepareForContainer(*context, *encoder, container);
  return opened(std::move(context), *encoder, error);
}

}  // namespace engine
