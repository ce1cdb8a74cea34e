// Asks the appcast feed (its address is configuration) whether a newer
// version exists. The feed is RSS: each <item> carries a <version> and a
// <link> to the release. An interactive check always answers the user; a
// background check only speaks when there is something newer.
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

#include "ASIHTTP/ASIHTTPRequest.h"
#include "ASIHTTP/ASIHTTPRequestDelegate.h"

class UpdateCheck : public QObject, private ASIHTTPRequestDelegate {
  Q_OBJECT

 public:
  struct Release {
    QString version;
    QUrl address;
  };

  static constexpr const char* kDownloadButton = "Download";
  static constexpr const char* kLaterButton = "Later";

  explicit UpdateCheck(QObject* parent = nullptr) : QObject(parent) {}
  ~UpdateCheck() override;

  // Starts a check against `feed` unless one is running.
  void check(const QUrl& feed, bool interactive);
  bool isChecking() const { return request_ != nullptr; }

  // The newest release the feed lists; none for a feed without one.
  static std::optional<Release> newestRelease(const QByteArray& feed);
  // Whether `version` comes after `current` ("2.10" after "2.9").
  static bool isNewer(const QString& version, const QString& current);

 signals:
  // The check ended: `newer` holds the release when one is newer than this build.
  void finished(const std::optional<UpdateCheck::Release>& newer);

 private:
  void requestFinished(ASIHTTPRequest* request) override;
  void requestFailed(ASIHTTPRequest* request) override;
  void end(const std::optional<Release>& newer, const QString& failure);

  std::shared_ptr<ASIHTTPRequest> request_;
  bool interactive_ = false;
};
