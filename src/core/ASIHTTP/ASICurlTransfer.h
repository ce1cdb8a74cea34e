// One attempt of a request on libcurl: an easy handle set up with the
// request's method, address, header fields and proxy, added to the network
// thread's multi handle. libcurl moves the bytes; following redirects,
// decoding the body and timing out are left to the request.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QUrl>

#include <curl/curl.h>

#include <optional>

#include "ASIHTTPRequestError.h"
#include "ASIHeaderFields.h"

class ASICurlTransfer {
 public:
  // Receives what the transfer reads; returning false stops the transfer.
  class Listener {
   public:
    virtual bool transferReceivedHeaderLine(QByteArrayView line) = 0;
    virtual bool transferReceivedBody(const char* data, size_t size) = 0;

   protected:
    ~Listener() = default;
  };

  struct Options {
    QUrl url;
    QString method;
    ASIHeaderFields headers;
    // Empty for a direct connection.
    QString proxy;
    bool validatesSecureCertificate = true;
    bool useCookiePersistence = true;
    // Open a new connection rather than reuse an idle one.
    bool freshConnection = false;
    // Close the connection when the transfer ends.
    bool forbidReuse = false;
  };

  // `owner` is handed back by ownerOf() for this transfer's handle.
  ASICurlTransfer(Listener& listener, void* owner);
  ~ASICurlTransfer();
  ASICurlTransfer(const ASICurlTransfer&) = delete;
  ASICurlTransfer& operator=(const ASICurlTransfer&) = delete;

  // Sets up the handle and adds it to `multi`.
  std::optional<ASIHTTPError> start(const Options& options, CURLM* multi);
  // The connection is closed rather than kept when the transfer ends.
  void forbidConnectionReuse();
  // True when the transfer went over a connection an earlier one had opened.
  bool reusedConnection() const;
  // The failure a transfer result stands for.
  ASIHTTPError errorFor(CURLcode result) const;
  // True for results that mean the connection went away under the transfer.
  static bool isLostConnection(CURLcode result);

  static void* ownerOf(CURL* handle);

 private:
  static size_t receiveHeader(char* data, size_t size, size_t count, void* transfer);
  static size_t receiveBody(char* data, size_t size, size_t count, void* transfer);
  QString transportErrorText(CURLcode result) const;

  Listener& listener_;
  void* owner_;
  CURL* handle_ = nullptr;
  CURLM* multi_ = nullptr;
  curl_slist* headerList_ = nullptr;
  char errorBuffer_[CURL_ERROR_SIZE] = {};
};
