#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <thread>

#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/NotificationCenter.h"
#include "EventLoopWait.h"

namespace {

TEST(NotificationCenter, APostOnTheMainThreadIsDeliveredAtOnce) {
  NotificationCenter center;
  int observer = 0;
  QVariant received;
  center.addObserver(&observer, QStringLiteral("READCROPINFO"), [&](const Notification& n) { received = n.object; });
  center.postNotificationName(QStringLiteral("OTHER"), 1);
  center.postNotificationName(QStringLiteral("READCROPINFO"), 42);
  EXPECT_EQ(received, QVariant(42));

  center.removeObserver(&observer);
  center.postNotificationName(QStringLiteral("READCROPINFO"), 43);
  EXPECT_EQ(received, QVariant(42)) << "a removed observer hears nothing";

  // An observer may remove another during a delivery.
  int first = 0;
  int second = 0;
  int secondCalls = 0;
  center.addObserver(&first, QStringLiteral("x"), [&](const Notification&) { center.removeObserver(&second); });
  center.addObserver(&second, QStringLiteral("x"), [&](const Notification&) { ++secondCalls; });
  center.postNotificationName(QStringLiteral("x"));
  EXPECT_EQ(secondCalls, 0);
}

TEST(NotificationCenter, APostFromAWorkerIsDeliveredOnTheMainThread) {
  NotificationCenter center;
  int observer = 0;
  std::vector<QThread*> deliveredOn;
  center.addObserver(&observer, QStringLiteral("CONVERTEND"),
                     [&](const Notification&) { deliveredOn.push_back(QThread::currentThread()); });

  std::thread worker([&center] {
    for (int i = 0; i < 100; ++i) center.postNotificationName(QStringLiteral("CONVERTEND"));
  });
  worker.join();
  EXPECT_TRUE(deliveredOn.empty()) << "nothing runs before the main thread's loop does";

  ASSERT_TRUE(waitUntil([&] { return deliveredOn.size() == 100; }));
  for (QThread* thread : deliveredOn) EXPECT_EQ(thread, QCoreApplication::instance()->thread());
}

TEST(DistributedNotificationCenter, DeliversInProcessImmediatelyOrQueued) {
  DistributedNotificationCenter& center = DistributedNotificationCenter::defaultCenter();
  int observer = 0;
  QStringList received;
  center.addObserver(&observer, QStringLiteral("KMVSETAPPSKINPATH"),
                     [&](const Notification& n) { received.append(n.object.toString()); });

  center.postNotificationName(QStringLiteral("KMVSETAPPSKINPATH"), QStringLiteral("now"), true);
  EXPECT_EQ(received, QStringList{QStringLiteral("now")});
  center.postNotificationName(QStringLiteral("KMVSETAPPSKINPATH"), QStringLiteral("later"));
  EXPECT_EQ(received.size(), 1);
  ASSERT_TRUE(waitUntil([&] { return received.size() == 2; }));
  EXPECT_EQ(received.last(), QStringLiteral("later"));
  center.removeObserver(&observer);
}

}  // namespace
