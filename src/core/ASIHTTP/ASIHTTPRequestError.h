// The errors a request can end with: one domain, a code per kind of failure,
// and the text shown for it.
#pragma once

#include <QString>

inline constexpr const char* kASIHTTPRequestErrorDomain = "ASIHTTPRequestErrorDomain";

enum class ASIHTTPErrorCode {
  ConnectionFailure = 1,
  TimedOut = 2,
  AuthenticationNeeded = 3,
  Cancelled = 4,
  UnableToCreateRequest = 5,
  UnableToStartConnection = 6,
  FileManagement = 8,
  TooManyRedirects = 9,
};

struct ASIHTTPError {
  QString domain = QString::fromLatin1(kASIHTTPRequestErrorDomain);
  ASIHTTPErrorCode code = ASIHTTPErrorCode::ConnectionFailure;
  // The text for the user.
  QString localizedDescription;
  // What the transport, zlib or the file system said; for the log.
  QString underlyingReason;

  static ASIHTTPError connectionFailure(const QString& reason);
  // A failure of the secure transport (certificate, handshake).
  static ASIHTTPError secureConnectionFailure(const QString& reason);
  static ASIHTTPError timedOut();
  static ASIHTTPError authenticationNeeded();
  static ASIHTTPError cancelled();
  static ASIHTTPError unableToCreateRequest(const QString& reason);
  static ASIHTTPError unableToCreateReadStream(const QString& reason);
  static ASIHTTPError unableToStartConnection(const QString& reason);
  static ASIHTTPError failedToGetAttributes(const QString& path, const QString& reason);
  static ASIHTTPError failedToMoveFile(const QString& from, const QString& to, const QString& reason);
  static ASIHTTPError failedToDeleteFile(const QString& path, const QString& reason);
  static ASIHTTPError failedToWriteFile(const QString& path, const QString& reason);
  static ASIHTTPError tooManyRedirects();
};
