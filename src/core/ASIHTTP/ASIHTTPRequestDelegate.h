// What a request tells the objects that follow it. Every call is made on the
// main thread.
#pragma once

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <type_traits>

class ASIHTTPRequest;
class ASIHeaderFields;

// The request's delegate. Each operation is optional: the defaults do nothing.
class ASIHTTPRequestDelegate {
 public:
  virtual ~ASIHTTPRequestDelegate() = default;
  virtual void requestStarted(ASIHTTPRequest*) {}
  virtual void requestDidReceiveResponseHeaders(ASIHTTPRequest*, const ASIHeaderFields&) {}
  virtual void requestWillRedirectToURL(ASIHTTPRequest*, const QUrl&) {}
  virtual void requestFinished(ASIHTTPRequest*) {}
  virtual void requestFailed(ASIHTTPRequest*) {}
};

// A delegate that also implements this takes the body in chunks as it
// arrives, and the request stores none of it.
class ASIHTTPRequestDataReceiver {
 public:
  virtual ~ASIHTTPRequestDataReceiver() = default;
  virtual void requestDidReceiveData(ASIHTTPRequest* request, const QByteArray& data) = 0;
};

// The download progress receiver: a fraction from 0.0 to 1.0.
class ASIProgressDelegate {
 public:
  virtual ~ASIProgressDelegate() = default;
  virtual void setDoubleValue(double value) = 0;
};

// A delegate operation that a caller picks for one of the request's events:
// a member function of the delegate's class. The request performs it only
// when its delegate is of that class (it "responds" to it).
template <class... Arguments>
class ASIDelegateSelector {
 public:
  template <class Receiver>
  ASIDelegateSelector(void (Receiver::*operation)(ASIHTTPRequest*, Arguments...))  // NOLINT: implicit on purpose
      : perform_([operation](ASIHTTPRequestDelegate* delegate, ASIHTTPRequest* request, Arguments... arguments) {
          Receiver* receiver = dynamic_cast<Receiver*>(delegate);
          if (receiver == nullptr) return false;
          (receiver->*operation)(request, std::forward<Arguments>(arguments)...);
          return true;
        }),
        respondsTo_([](ASIHTTPRequestDelegate* delegate) { return dynamic_cast<Receiver*>(delegate) != nullptr; }) {
    static_assert(std::is_polymorphic_v<Receiver>, "a delegate class has virtual functions");
  }

  bool respondsTo(ASIHTTPRequestDelegate* delegate) const { return delegate != nullptr && respondsTo_(delegate); }
  // Performs the operation; false when the delegate does not respond to it.
  bool perform(ASIHTTPRequestDelegate* delegate, ASIHTTPRequest* request, Arguments... arguments) const {
    return delegate != nullptr && perform_(delegate, request, std::forward<Arguments>(arguments)...);
  }

 private:
  std::function<bool(ASIHTTPRequestDelegate*, ASIHTTPRequest*, Arguments...)> perform_;
  std::function<bool(ASIHTTPRequestDelegate*)> respondsTo_;
};

using ASIRequestSelector = ASIDelegateSelector<>;
using ASIHeadersSelector = ASIDelegateSelector<const ASIHeaderFields&>;
using ASIRedirectSelector = ASIDelegateSelector<const QUrl&>;
using ASIDataSelector = ASIDelegateSelector<const QByteArray&>;
