#include "AudioFilterChain.h"

#include <algorithm>
#include <vector>

#include "FilterText.h"

namespace engine {
namespace {

// 256 leaves the sound as it is; the scale is linear.
constexpr double kUnityVolume = 256.0;

std::string layoutName(const AVChannelLayout& layout) {
  char name[128] = {};
  av_channel_layout_describe(&layout, name, sizeof name);
  return name;
}

std::string formatFilter(const AudioCanvas& canvas) {
  return std::string("aformat=sample_fmts=") + av_get_sample_fmt_name(canvas.sampleFormat) +
         ":sample_rates=" + std::to_string(canvas.sampleRate) + ":channel_layouts=" + layoutName(canvas.channelLayout);
}

std::string lengthFilter(const AudioCanvas& canvas) {
  return canvas.sampleCount > 0 ? "atrim=end_sample=" + std::to_string(canvas.sampleCount) : std::string();
}

std::vector<std::string> fadeFilters(const MediaItem& item, const AudioCanvas& canvas) {
  std::vector<std::string> filters;
  const double fadeIn = item.m_fadeIn_len / 1e6;
  if (fadeIn > 0) filters.push_back("afade=t=in:st=0:d=" + decimal(fadeIn));
  const double fadeOut = item.m_fadeOut_len / 1e6;
  const int64_t partSamples = canvas.sampleCount > 0 ? canvas.sampleCount : canvas.partSamples;
  if (fadeOut > 0 && partSamples > 0) {
    const double length = static_cast<double>(partSamples) / canvas.sampleRate;
    const double duration = std::min(fadeOut, length);
    filters.push_back("afade=t=out:st=" + decimal(length - duration) + ":d=" + decimal(duration));
  }
  return filters;
}

}  // namespace

void labelChannels(AVFrame& frame) {
  if (frame.ch_layout.order != AV_CHANNEL_ORDER_UNSPEC) return;
  const int channels = frame.ch_layout.nb_channels;
  av_channel_layout_uninit(&frame.ch_layout);
  av_channel_layout_default(&frame.ch_layout, channels);
}

std::string AudioFilterChain::forInput(const MediaItem& item, const AudioCanvas& canvas) {
  // first_pts fills a late start with silence and cuts what lies before the start.
  std::vector<std::string> filters{"aresample=" + std::to_string(canvas.sampleRate) +
                                   ":first_pts=" + std::to_string(canvas.startSample)};
  if (canvas.sampleCount > 0) filters.push_back("apad=whole_len=" + std::to_string(canvas.sampleCount));
  filters.push_back(lengthFilter(canvas));
  const int volume = item.m_volume;
  if (volume != kUnityVolume) filters.push_back("volume=" + decimal(std::max(0, volume) / kUnityVolume));
  for (std::string& fade : fadeFilters(item, canvas)) filters.push_back(std::move(fade));
  // Last, so that what comes out is exactly what the encoder takes.
  filters.push_back(formatFilter(canvas));
  return "[in]" + chain(filters) + "[out]";
}

std::string AudioFilterChain::silence(const AudioCanvas& canvas) {
  return chain({"anullsrc=r=" + std::to_string(canvas.sampleRate) + ":cl=" + layoutName(canvas.channelLayout),
                lengthFilter(canvas), formatFilter(canvas)}) +
         "[out]";
}

}  // namespace engine
