#include <gtest/gtest.h>

#include <QDate>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "CommonClass/KMVLog.h"

namespace {

// Points the log at a folder for one test and back afterwards.
class KMVLogTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder_.isValid());
    previous_ = KMVLog::folder();
    KMVLog::setFolder(folder_.path() + QLatin1Char('/'));
  }
  void TearDown() override { KMVLog::setFolder(previous_); }

  QString todaysFile() const {
    return folder_.path() + QStringLiteral("//") + QDate::currentDate().toString(QStringLiteral("yyyyMMdd")) +
           QStringLiteral(".txt");
  }

  QTemporaryDir folder_;
  QString previous_;
};

TEST_F(KMVLogTest, AppendsTimeTabMessageAndCrLfToTodaysFileOrSaysOnTheConsoleItCannot) {
  KMVLog::Log(QStringLiteral("Create Path :/x fail"));
  KMVLog::Log(QStringLiteral("second ü"));

  QFile file(todaysFile());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  static const QRegularExpression line(
      QStringLiteral("^\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2}\tCreate Path :/x fail\r\n"
                     "\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2}\tsecond ü\r\n$"));
  EXPECT_TRUE(line.match(text).hasMatch()) << text.toStdString();

  // A file that cannot be opened is reported on the console only.
  KMVLog::setFolder(folder_.path() + QStringLiteral("/missing/"));
  testing::internal::CaptureStdout();
  KMVLog::Log(QStringLiteral("lost"));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Cannot open file strike any key exit!\n");
}

}  // namespace
