#include "ASICurlTransfer.h"

#include <QByteArray>

namespace {

// libcurl's read size: large chunks keep the per-chunk work small.
constexpr long kReceiveBufferSize = 256 * 1024;

// The cookie jar that requests keeping cookies share. Only the network thread
// uses it, so it needs no lock.
CURLSH* sharedCookieJar() {
  static CURLSH* share = [] {
    CURLSH* created = curl_share_init();
    if (created != nullptr) curl_share_setopt(created, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    return created;
  }();
  return share;
}

bool isSecureTransportError(CURLcode result) {
  switch (result) {
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_USE_SSL_FAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_SHUTDOWN_FAILED:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_CLIENTCERT: return true;
    default: return false;
  }
}

}  // namespace

ASICurlTransfer::ASICurlTransfer(Listener& listener, void* owner) : listener_(listener), owner_(owner) {}

ASICurlTransfer::~ASICurlTransfer() {
  if (multi_ != nullptr) curl_multi_remove_handle(multi_, handle_);
  if (handle_ != nullptr) curl_easy_cleanup(handle_);
  curl_slist_free_all(headerList_);
}

std::optional<ASIHTTPError> ASICurlTransfer::start(const Options& options, CURLM* multi) {
  handle_ = curl_easy_init();
  if (handle_ == nullptr) return ASIHTTPError::unableToCreateReadStream(QStringLiteral("curl_easy_init failed"));

  for (const ASIHeaderFields::Field& field : options.headers.fields()) {
    const QByteArray line = (field.first + QStringLiteral(": ") + field.second).toLatin1();
    headerList_ = curl_slist_append(headerList_, line.constData());
  }
  // No body is ever sent, so no content type either.
  headerList_ = curl_slist_append(headerList_, "Content-Type:");

  const QByteArray url = options.url.toEncoded();
  const QByteArray method = options.method.toLatin1();
  const QByteArray proxy = options.proxy.toUtf8();
  CURLcode result = CURLE_OK;
  const auto set = [this, &result](CURLoption option, auto value) {
    if (result == CURLE_OK) result = curl_easy_setopt(handle_, option, value);
  };
  set(CURLOPT_URL, url.constData());
  // Redirects are followed by the request, never to anything but HTTP.
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  if (method == "GET") {
    set(CURLOPT_HTTPGET, 1L);
  } else if (method == "HEAD") {
    set(CURLOPT_NOBODY, 1L);
  } else {
    set(CURLOPT_POSTFIELDSIZE, 0L);
    set(CURLOPT_POSTFIELDS, "");
    set(CURLOPT_CUSTOMREQUEST, method.constData());
  }
  set(CURLOPT_HTTPHEADER, headerList_);
  set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  set(CURLOPT_FOLLOWLOCATION, 0L);
  set(CURLOPT_HTTP_CONTENT_DECODING, 0L);
  set(CURLOPT_PROXY, proxy.constData());
  set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
  set(CURLOPT_SSL_VERIFYPEER, options.validatesSecureCertificate ? 1L : 0L);
  set(CURLOPT_SSL_VERIFYHOST, options.validatesSecureCertificate ? 2L : 0L);
  if (options.useCookiePersistence && sharedCookieJar() != nullptr) {
    set(CURLOPT_COOKIEFILE, "");
    set(CURLOPT_SHARE, sharedCookieJar());
  }
  set(CURLOPT_FRESH_CONNECT, options.freshConnection ? 1L : 0L);
  set(CURLOPT_FORBID_REUSE, options.forbidReuse ? 1L : 0L);
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_BUFFERSIZE, kReceiveBufferSize);
  set(CURLOPT_ERRORBUFFER, errorBuffer_);
  set(CURLOPT_PRIVATE, owner_);
  set(CURLOPT_HEADERFUNCTION, &ASICurlTransfer::receiveHeader);
  set(CURLOPT_HEADERDATA, this);
  set(CURLOPT_WRITEFUNCTION, &ASICurlTransfer::receiveBody);
  set(CURLOPT_WRITEDATA, this);
  if (result == CURLE_URL_MALFORMAT || result == CURLE_UNSUPPORTED_PROTOCOL) {
    return ASIHTTPError::unableToCreateRequest(transportErrorText(result));
  }
  if (result != CURLE_OK) return ASIHTTPError::unableToCreateReadStream(transportErrorText(result));

  const CURLMcode added = curl_multi_add_handle(multi, handle_);
  if (added != CURLM_OK) {
    return ASIHTTPError::unableToStartConnection(QString::fromLatin1(curl_multi_strerror(added)));
  }
  multi_ = multi;
  return std::nullopt;
}

void ASICurlTransfer::forbidConnectionReuse() { curl_easy_setopt(handle_, CURLOPT_FORBID_REUSE, 1L); }

bool ASICurlTransfer::reusedConnection() const {
  long newConnections = 0;
  return curl_easy_getinfo(handle_, CURLINFO_NUM_CONNECTS, &newConnections) == CURLE_OK && newConnections == 0;
}

ASIHTTPError ASICurlTransfer::errorFor(CURLcode result) const {
  const QString reason = transportErrorText(result);
  if (result == CURLE_URL_MALFORMAT || result == CURLE_UNSUPPORTED_PROTOCOL) {
    return ASIHTTPError::unableToCreateRequest(reason);
  }
  if (isSecureTransportError(result)) return ASIHTTPError::secureConnectionFailure(reason);
  return ASIHTTPError::connectionFailure(reason);
}

bool ASICurlTransfer::isLostConnection(CURLcode result) {
  return result == CURLE_SEND_ERROR || result == CURLE_RECV_ERROR || result == CURLE_GOT_NOTHING ||
         result == CURLE_PARTIAL_FILE;
}

void* ASICurlTransfer::ownerOf(CURL* handle) {
  void* owner = nullptr;
  curl_easy_getinfo(handle, CURLINFO_PRIVATE, &owner);
  return owner;
}

QString ASICurlTransfer::transportErrorText(CURLcode result) const {
  const QString detail = QString::fromLocal8Bit(errorBuffer_);
  return detail.isEmpty() ? QString::fromLatin1(curl_easy_strerror(result)) : detail;
}

size_t ASICurlTransfer::receiveHeader(char* data, size_t size, size_t count, void* transfer) {
  const size_t length = size * count;
  auto* self = static_cast<ASICurlTransfer*>(transfer);
  return self->listener_.transferReceivedHeaderLine(QByteArrayView(data, static_cast<qsizetype>(length))) ? length : 0;
}

size_t ASICurlTransfer::receiveBody(char* data, size_t size, size_t count, void* transfer) {
  const size_t length = size * count;
  auto* self = static_cast<ASICurlTransfer*>(transfer);
  return self->listener_.transferReceivedBody(data, length) ? length : 0;
}
