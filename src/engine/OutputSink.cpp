#include "OutputSink.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <filesystem>

#include "AtomicFile.h"
#include "EngineLog.h"

namespace engine {

struct OutputSink::StreamState {
  AVCodecParameters* parameters = nullptr;
  AVRational timeBase{};
  bool changesAtKeyframes = false;
  int piece = 0;
  bool ended = false;
  ~StreamState() { avcodec_parameters_free(&parameters); }
};

struct OutputSink::Piece {
  AVFormatContext* context = nullptr;
  std::string path;           // the final name
  std::string temporaryPath;  // the name it is written under
  int64_t startUs = 0;
  ~Piece() {
    closeFile();
    avformat_free_context(context);
  }
  int closeFile() {
    return context != nullptr && !(context->oformat->flags & AVFMT_NOFILE) ? avio_closep(&context->pb) : 0;
  }
  // Gives up the piece unfinished.
  void abandon() {
    closeFile();
    std::remove(temporaryPath.c_str());
  }
};

OutputSink::OutputSink(std::string path, const AVOutputFormat& format, int64_t segmentLengthUs,
                       std::function<void(int64_t)> onProgress)
    : path_(std::move(path)),
      format_(format),
      segmentLengthUs_(std::max<int64_t>(0, segmentLengthUs)),
      onProgress_(std::move(onProgress)) {}

OutputSink::~OutputSink() {
  std::lock_guard lock(mutex_);
  if (!kept_) discard();
}

std::string OutputSink::piecePath(const std::string& path, int piece) {
  const std::filesystem::path whole(path);
  const std::string name = whole.stem().string() + "_" + std::to_string(piece) + whole.extension().string();
  return (whole.parent_path() / name).string();
}

int OutputSink::addStream(const AVCodecContext& encoder) {
  auto stream = std::make_unique<StreamState>();
  stream->parameters = avcodec_parameters_alloc();
  if (stream->parameters != nullptr) avcodec_parameters_from_context(stream->parameters, &encoder);
  stream->timeBase = encoder.time_base;
  stream->changesAtKeyframes = encoder.codec_type == AVMEDIA_TYPE_VIDEO;
  std::lock_guard lock(mutex_);
  streams_.push_back(std::move(stream));
  return static_cast<int>(streams_.size()) - 1;
}

int OutputSink::pieceFor(const StreamState& stream, const AVPacket& packet) const {
  if (segmentLengthUs_ == 0 || packet.pts == AV_NOPTS_VALUE) return stream.piece;
  if (stream.changesAtKeyframes && !(packet.flags & AV_PKT_FLAG_KEY)) return stream.piece;
  const int64_t timeUs = std::max<int64_t>(0, av_rescale_q(packet.pts, stream.timeBase, AV_TIME_BASE_Q));
  return std::max(stream.piece, static_cast<int>(timeUs / segmentLengthUs_));
}

OutputSink::Piece* OutputSink::openPiece(int index, std::string& error) {
  if (auto found = openPieces_.find(index); found != openPieces_.end()) return found->second.get();
  auto piece = std::make_unique<Piece>();
  piece->path = segmentLengthUs_ > 0 ? piecePath(path_, index) : path_;
  piece->temporaryPath = temporaryPathFor(piece->path);
  piece->startUs = segmentLengthUs_ * index;
  int result = avformat_alloc_output_context2(&piece->context, &format_, nullptr, piece->temporaryPath.c_str());
  for (const auto& stream : streams_) {
    if (result < 0) break;
    AVStream* muxed = avformat_new_stream(piece->context, nullptr);
    result = muxed != nullptr ? avcodec_parameters_copy(muxed->codecpar, stream->parameters) : AVERROR(ENOMEM);
    if (muxed != nullptr) muxed->time_base = stream->timeBase;
  }
  if (result >= 0 && !(format_.flags & AVFMT_NOFILE)) {
    result = avio_open(&piece->context->pb, piece->temporaryPath.c_str(), AVIO_FLAG_WRITE);
  }
  if (result >= 0) result = avformat_write_header(piece->context, nullptr);
  if (result < 0) {
    error = "cannot create " + piece->path + ": " + ffmpegErrorText(result);
    piece->abandon();
    return nullptr;
  }
  return openPieces_.emplace(index, std::move(piece)).first->second.get();
}

bool OutputSink::write(int streamIndex, AVPacket& packet, std::string& error) {
  std::lock_guard lock(mutex_);
  StreamState& stream = *streams_.at(streamIndex);
  const int target = pieceFor(stream, packet);
  if (target != stream.piece) {
    stream.piece = target;
    if (!finishPiecesBefore(lowestPieceInUse(), error)) return false;
  }
  Piece* piece = openPiece(target, error);
  if (piece == nullptr) return false;
  // Decode order: everything up to a packet's decoding time is in the file, unlike its showing time.
  const int64_t writtenUntil = packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts;
  if (streamIndex == 0 && writtenUntil != AV_NOPTS_VALUE) {
    writtenUs_ = std::max(writtenUs_, av_rescale_q(writtenUntil + packet.duration, stream.timeBase, AV_TIME_BASE_Q));
    onProgress_(writtenUs_);
  }
  const int64_t shift = av_rescale_q(piece->startUs, AV_TIME_BASE_Q, stream.timeBase);
  if (packet.pts != AV_NOPTS_VALUE) packet.pts -= shift;
  if (packet.dts != AV_NOPTS_VALUE) packet.dts -= shift;
  av_packet_rescale_ts(&packet, stream.timeBase, piece->context->streams[streamIndex]->time_base);
  packet.stream_index = streamIndex;
  const int result = av_interleaved_write_frame(piece->context, &packet);
  if (result < 0) {
    error = "cannot write " + piece->path + ": " + ffmpegErrorText(result);
    return false;
  }
  return true;
}

bool OutputSink::endStream(int streamIndex, std::string& error) {
  std::lock_guard lock(mutex_);
  streams_.at(streamIndex)->ended = true;
  return finishPiecesBefore(lowestPieceInUse(), error);
}

int OutputSink::lowestPieceInUse() const {
  int lowest = INT_MAX;
  for (const auto& stream : streams_) {
    if (!stream->ended) lowest = std::min(lowest, stream->piece);
  }
  return lowest;
}

bool OutputSink::finishPiecesBefore(int index, std::string& error) {
  while (!openPieces_.empty() && openPieces_.begin()->first < index) {
    const bool finished = finishPiece(*openPieces_.begin()->second, error);
    openPieces_.erase(openPieces_.begin());
    if (!finished) return false;
  }
  return true;
}

bool OutputSink::finishPiece(Piece& piece, std::string& error) {
  int result = av_write_trailer(piece.context);
  const int closed = piece.closeFile();
  if (result >= 0) result = closed;
  if (result >= 0 && std::rename(piece.temporaryPath.c_str(), piece.path.c_str()) != 0) result = AVERROR(errno);
  if (result < 0) {
    error = "cannot write " + piece.path + ": " + ffmpegErrorText(result);
    piece.abandon();
    return false;
  }
  files_.push_back(piece.path);
  return true;
}

bool OutputSink::finishAll(std::string& error) {
  std::lock_guard lock(mutex_);
  if (!finishPiecesBefore(INT_MAX, error)) return false;
  kept_ = true;
  return true;
}

void OutputSink::discard() {
  for (auto& [index, piece] : openPieces_) piece->abandon();
  openPieces_.clear();
  for (const std::string& file : files_) std::remove(file.c_str());
  files_.clear();
}

std::vector<std::string> OutputSink::files() const {
  std::lock_guard lock(mutex_);
  return files_;
}

}  // namespace engine
