// Writes the encoded packets of all streams into the output file, or, with a
// segment length, into pieces "<name>_0.<ext>", "<name>_1.<ext>", ... each
// starting at a multiple of that length. A picture stream changes pieces only
// at a key frame (the encoder is asked for one at each boundary); a sound
// stream changes by time. A piece is finished once every stream has moved
// past it. Each file is written under a hidden temporary name beside its own
// and renamed once finished, so that a final name never shows a broken file,
// not even after the process was killed. Safe to call from the encoding
// threads at once.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "FFmpegPointers.h"

namespace engine {

class OutputSink {
 public:
  // onProgress is told the end time of the output written so far, on the
  // whole output's time line, taken from the first stream added.
  OutputSink(std::string path, const AVOutputFormat& format, int64_t segmentLengthUs,
             std::function<void(int64_t)> onProgress);
  // Removes every file of this output, finished or not, unless finishAll()
  // kept them: after a failure.
  ~OutputSink();
  OutputSink(const OutputSink&) = delete;
  OutputSink& operator=(const OutputSink&) = delete;

  // All streams are added before the first packet. Returns the stream's index.
  int addStream(const AVCodecContext& encoder);
  // Packet times are in the encoder's time base. False with `error` set when writing failed.
  bool write(int stream, AVPacket& packet, std::string& error);
  // The stream will send nothing more; pieces every stream has left are finished.
  bool endStream(int stream, std::string& error);
  // Finishes every piece still open, as far as it goes, and keeps all of
  // them: at the end, and after an abort. False with `error` set when a piece
  // could not be finished; the files are not kept then.
  bool finishAll(std::string& error);
  // The final names of the files finished so far, in order.
  std::vector<std::string> files() const;

  static std::string piecePath(const std::string& path, int piece);

 private:
  struct StreamState;
  struct Piece;

  int pieceFor(const StreamState& stream, const AVPacket& packet) const;
  Piece* openPiece(int index, std::string& error);
  bool finishPiecesBefore(int index, std::string& error);
  bool finishPiece(Piece& piece, std::string& error);
  int lowestPieceInUse() const;
  void discard();

  const std::string path_;
  const AVOutputFormat& format_;
  const int64_t segmentLengthUs_;
  const std::function<void(int64_t)> onProgress_;
  int64_t writtenUs_ = 0;
  mutable std::mutex mutex_;
  std::vector<std::unique_ptr<StreamState>> streams_;
  std::map<int, std::unique_ptr<Piece>> openPieces_;
  std::vector<std::string> files_;
  bool kept_ = false;
};

}  // namespace engine
