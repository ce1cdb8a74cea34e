#include "ASIHTTPRequestError.h"

namespace {

ASIHTTPError makeError(ASIHTTPErrorCode code, const QString& description, const QString& reason = {}) {
  ASIHTTPError error;
  error.code = code;
  error.localizedDescription = description;
  error.underlyingReason = reason;
  return error;
}

const QString kConnectionFailureText = QStringLiteral("A connection failure occurred");

}  // namespace

ASIHTTPError ASIHTTPError::connectionFailure(const QString& reason) {
  return makeError(ASIHTTPErrorCode::ConnectionFailure, kConnectionFailureText, reason);
}

ASIHTTPError ASIHTTPError::secureConnectionFailure(const QString& reason) {
  return makeError(ASIHTTPErrorCode::ConnectionFailure,
                   QStringLiteral("%1: SSL problem (Possible causes may include a bad/expired/self-signed certificate, "
                                  "clock set to wrong date)")
                       .arg(kConnectionFailureText),
                   reason);
}

ASIHTTPError ASIHTTPError::timedOut() {
  return makeError(ASIHTTPErrorCode::TimedOut, QStringLiteral("The request timed out"));
}

ASIHTTPError ASIHTTPError::authenticationNeeded() {
  return makeError(ASIHTTPErrorCode::AuthenticationNeeded, QStringLiteral("Authentication needed"));
}

ASIHTTPError ASIHTTPError::cancelled() {
  return makeError(ASIHTTPErrorCode::Cancelled, QStringLiteral("The request was cancelled"));
}

ASIHTTPError ASIHTTPError::unableToCreateRequest(const QString& reason) {
  return makeError(ASIHTTPErrorCode::UnableToCreateRequest, QStringLiteral("Unable to create request (bad url?)"),
                   reason);
}

ASIHTTPError ASIHTTPError::unableToCreateReadStream(const QString& reason) {
  return makeError(ASIHTTPErrorCode::UnableToStartConnection, QStringLiteral("Unable to create read stream"), reason);
}

ASIHTTPError ASIHTTPError::unableToStartConnection(const QString& reason) {
  return makeError(ASIHTTPErrorCode::UnableToStartConnection, QStringLiteral("Unable to start HTTP connection"),
                   reason);
}

ASIHTTPError ASIHTTPError::failedToGetAttributes(const QString& path, const QString& reason) {
  return makeError(ASIHTTPErrorCode::FileManagement,
                   QStringLiteral("Failed to get attributes for file at path '%1'").arg(path), reason);
}

ASIHTTPError ASIHTTPError::failedToMoveFile(const QString& from, const QString& to, const QString& reason) {
  return makeError(ASIHTTPErrorCode::FileManagement,
                   QStringLiteral("Failed to move file from '%1' to '%2'").arg(from, to), reason);
}

ASIHTTPError ASIHTTPError::failedToDeleteFile(const QString& path, const QString& reason) {
  return makeError(ASIHTTPErrorCode::FileManagement, QStringLiteral("Failed to delete file at path '%1'").arg(path),
                   reason);
}

ASIHTTPError ASIHTTPError::failedToWriteFile(const QString& path, const QString& reason) {
  return makeError(ASIHTTPErrorCode::FileManagement, QStringLiteral("Failed to write to file at path '%1'").arg(path),
                   reason);
}

ASIHTTPError ASIHTTPError::tooManyRedirects() {
  return makeError(ASIHTTPErrorCode::TooManyRedirects,
                   QStringLiteral("The request failed because it redirected too many times"));
}
