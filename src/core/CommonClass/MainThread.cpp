#include "MainThread.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

namespace MainThread {

bool isCurrent() {
  const QCoreApplication* app = QCoreApplication::instance();
  return app == nullptr || QThread::currentThread() == app->thread();
}

void post(std::function<void()> work) {
  QCoreApplication* app = QCoreApplication::instance();
  if (app == nullptr) {
    work();
    return;
  }
  QMetaObject::invokeMethod(app, std::move(work), Qt::QueuedConnection);
}

void run(std::function<void()> work) {
  if (isCurrent()) {
    work();
  } else {
    post(std::move(work));
  }
}

}  // namespace MainThread
