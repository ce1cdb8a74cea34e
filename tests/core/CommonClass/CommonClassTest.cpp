#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "CommonClass/AESData.h"
#include "CommonClass/CommonClass.h"

namespace {

void writeFile(const QString& path, qsizetype size) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(size, 'x'));
}

TEST(CommonClassText, FormatsWholeSecondsAsHoursMinutesSecondsAndTrimsTheWayTheListNamesNeed) {
  EXPECT_EQ(CommonClass::formatTimeForDouble(3661.9), QStringLiteral("01:01:01"));
  EXPECT_EQ(CommonClass::formatTimeForDouble(0), QStringLiteral("00:00:00"));
  EXPECT_EQ(CommonClass::formatTimeForDouble(100 * 3600), QStringLiteral("100:00:00"));
  EXPECT_EQ(CommonClass::formatTimeForDouble(59.999), QStringLiteral("00:00:59"));
  EXPECT_EQ(CommonClass::timeStrBySecond(3599), QStringLiteral("00:59:59"));
  EXPECT_EQ(CommonClass::timeFormatBySecond(86399), "23:59:59");
  EXPECT_DOUBLE_EQ(CommonClass::getMinute(90), 1.5);

  EXPECT_EQ(CommonClass::NSStringTrim(QStringLiteral("  a b \n")), QStringLiteral("ab"));
  EXPECT_EQ(CommonClass::NSStringTrim(QStringLiteral("\tx\t y\n")), QStringLiteral("x\ty")) << "inner tabs stay";

  char padded[] = "  \t name  \n";
  EXPECT_EQ(CommonClass::trim(padded), padded);
  EXPECT_STREQ(padded, "name");
  char blank[] = " \t\n ";
  EXPECT_EQ(CommonClass::trim(blank), nullptr);
  EXPECT_EQ(CommonClass::trim(nullptr), nullptr);
}

TEST(CommonClassSize, MeasuresFilesAndFoldersAndColoursParseFromSixOrEightDigitHex) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  writeFile(folder.filePath(QStringLiteral("a.bin")), 3000);
  QDir(folder.path()).mkpath(QStringLiteral("sub/deeper"));
  writeFile(folder.filePath(QStringLiteral("sub/deeper/b.bin")), 5000);

  EXPECT_EQ(CommonClass::getFileSizeByBytes(folder.filePath(QStringLiteral("a.bin"))), 3000);
  EXPECT_EQ(CommonClass::getFileSize(folder.filePath(QStringLiteral("a.bin"))), 2u) << "3000 / 1024 truncated";
  EXPECT_EQ(CommonClass::getFileSizeByBytes(folder.filePath(QStringLiteral("missing"))), 0);
  EXPECT_DOUBLE_EQ(CommonClass::getFolderSize(folder.path()), 8000.0);
  EXPECT_DOUBLE_EQ(CommonClass::getFileSizeForGB(1000000000.0), 1.0);

  EXPECT_EQ(CommonClass::getColor(QStringLiteral("FF0000")), (RGBAColor{1.0, 0.0, 0.0, 1.0}));
  const auto translucent = CommonClass::getColor(QStringLiteral("80FF0000"));
  ASSERT_TRUE(translucent);
  EXPECT_DOUBLE_EQ(translucent->alpha, 128 / 255.0);
  EXPECT_DOUBLE_EQ(translucent->red, 1.0);
  EXPECT_EQ(CommonClass::getColorInteger(*CommonClass::getColor(QStringLiteral("12ab9F"))), 0x12AB9Fu);

  EXPECT_FALSE(CommonClass::getColor(QStringLiteral("F00")));
  EXPECT_FALSE(CommonClass::getColor(QString()));
  EXPECT_FALSE(CommonClass::getColor(QStringLiteral("GG0000")));
}

TEST(CommonClassFiles, CreatesCopiesAndDeletes) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  const QString nested = folder.filePath(QStringLiteral("one/two/three"));
  EXPECT_FALSE(CommonClass::creatOutputDirectory(QString()));
  EXPECT_TRUE(CommonClass::creatOutputDirectory(nested));
  EXPECT_TRUE(QDir(nested).exists());
  EXPECT_TRUE(CommonClass::creatOutputDirectory(nested)) << "an existing folder is fine";

  const QString file = folder.filePath(QStringLiteral("source.txt"));
  writeFile(file, 10);
  EXPECT_FALSE(CommonClass::creatOutputDirectory(file + QStringLiteral("/below"))) << "a file is in the way";
  EXPECT_TRUE(CommonClass::copyFile(file, nested + QLatin1Char('/')));
  EXPECT_EQ(CommonClass::getFileSizeByBytes(nested + QStringLiteral("/source.txt")), 10);

  CommonClass::deleteFile(folder.filePath(QStringLiteral("one")));
  EXPECT_FALSE(QDir(folder.filePath(QStringLiteral("one"))).exists());
  CommonClass::deleteFile(folder.filePath(QStringLiteral("never-there")));
}

TEST(CommonClassArchive, ProductInfoSurvivesSaveAndDeepCopy) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  ProductInfo original;
  original.encryptionKey = QByteArray(16, 'k');
  original.mainWindowName = *AESData::encryptedDataUsingAESKey("Name", original.encryptionKey);
  original.linkID = QByteArray("\x00\x01\xff", 3);

  const QString path = folder.filePath(QStringLiteral("archive"));
  ASSERT_TRUE(CommonClass::saveObject(original, path));
  ProductInfo loaded;
  ASSERT_TRUE(CommonClass::copyObject(loaded, path));
  EXPECT_EQ(loaded, original);
  EXPECT_EQ(loaded.decryptedText(loaded.mainWindowName), QStringLiteral("Name"));
  EXPECT_EQ(loaded.decryptedText(loaded.aboutTitle), QString()) << "an empty field decrypts to nothing";

  ProductInfo copy;
  ASSERT_TRUE(CommonClass::CopyObject(original, copy));
  EXPECT_EQ(copy, original);

  ProductInfo untouched = copy;
  EXPECT_FALSE(CommonClass::copyObject(untouched, folder.filePath(QStringLiteral("missing"))));
  EXPECT_EQ(untouched, copy) << "a missing file leaves the object as it was";
  EXPECT_FALSE(CommonClass::DatatoObj<ProductInfo>("not a property list"));
}

TEST(CommonClassArchive, TheShippedProductInfoDecryptsWithItsOwnKey) {
  const auto info = CommonClass::readProductInfo();
  ASSERT_TRUE(info) << CommonClass::productInfoPath().toStdString();
  EXPECT_EQ(info->encryptionKey.size(), 32);
  EXPECT_FALSE(info->decryptedText(info->mainWindowName).isEmpty());
  EXPECT_TRUE(info->decryptedText(info->linkID).contains(QStringLiteral("version")));
}

}  // namespace
