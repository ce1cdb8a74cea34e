// The transfer of one task's file into "<destination>.download", moved to
// the destination once whole. A download item starts it; it ends once,
// finished or failed, unless it is stopped first, and then it says nothing.
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

#include <memory>

class ItemDownload : public QObject {
  Q_OBJECT

 public:
  // The transfer that suits the address: a streaming manifest is remuxed into
  // MP4 by the engine, anything else is downloaded over HTTP with resume.
  static std::unique_ptr<ItemDownload> forAddress(const QUrl& address, const QString& destination);
  // An HLS playlist or a DASH manifest (or one of its representations), by
  // the address's path or its "#representation=" mark.
  static bool isStreamingManifest(const QUrl& address);

  ItemDownload(QUrl address, QString destination);

  const QUrl& address() const { return address_; }
  const QString& destination() const { return destination_; }
  // Where the file grows until it is whole: the destination + ".download".
  QString temporaryPath() const { return destination_ + QStringLiteral(".download"); }

  // Starts, or starts again after stop().
  virtual void start() = 0;
  // Stops without a word; what is in the temporary file stays.
  virtual void stop() = 0;

 signals:
  // How much of the file is there, 0.0 to 1.0.
  void progressChanged(double fraction);
  void didFinish();
  // `reason` says what went wrong, for the log.
  void didFail(const QString& reason);

 private:
  QUrl address_;
  QString destination_;
};
