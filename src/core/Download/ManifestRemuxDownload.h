// A streaming manifest (an HLS playlist, a DASH manifest) remuxed into one
// MP4 file by the engine, which fetches the segments itself. A remux cannot
// take up a half-written file, so each start begins the file afresh.
#pragma once

#include <QTimer>

#include <atomic>
#include <cstdint>

#include "Download/ItemDownload.h"
#include "videoconverter.h"

class ManifestRemuxDownload : public ItemDownload {
  Q_OBJECT

 public:
  ManifestRemuxDownload(QUrl address, QString destination);
  ~ManifestRemuxDownload() override;

  void start() override;
  // Waits for the engine to let go of the file, which takes a moment at most.
  void stop() override;

 private:
  // Called by the engine on the remux's thread.
  static void remuxEnded(void* download);
  void remuxDidEnd(uint64_t run);
  void reportProgress();
  void release();

  VideoConverter_Remux* remux_ = nullptr;
  // Counts the starts, so that the end of a stopped remux is not taken for
  // the end of the next one.
  std::atomic<uint64_t> run_{0};
  QTimer progressTimer_;
};
