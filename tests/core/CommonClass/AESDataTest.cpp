#include <gtest/gtest.h>

#include "CommonClass/AESData.h"

namespace {

class AESDataKeys : public testing::TestWithParam<int> {};

TEST_P(AESDataKeys, RoundTripsEveryLengthThroughIvAndPadding) {
  const QByteArray key(GetParam(), '\x5a');
  for (int length : {0, 1, 15, 16, 17, 1000}) {
    const QByteArray plain(length, 'p');
    const auto encrypted = AESData::encryptedDataUsingAESKey(plain, key);
    ASSERT_TRUE(encrypted) << length;
    // IV, then the plain text padded up to the next whole block.
    EXPECT_EQ(encrypted->size(), 16 + (length / 16 + 1) * 16) << length;
    EXPECT_EQ(AESData::decryptedDataUsingAESKey(*encrypted, key), plain) << length;
  }
}

INSTANTIATE_TEST_SUITE_P(KeyLengths, AESDataKeys, testing::Values(16, 24, 32));

TEST(AESData, RefusesWhatItCannotHandleAndDrawsAFreshIvEachTime) {
  const QByteArray key(16, 'k');
  EXPECT_FALSE(AESData::decryptedDataUsingAESKey(QByteArray(15, 'x'), key)) << "shorter than an IV";
  EXPECT_FALSE(AESData::encryptedDataUsingAESKey("text", QByteArray(15, 'k'))) << "key of 15 bytes";
  EXPECT_FALSE(AESData::encryptedDataUsingAESKey("text", QByteArray())) << "no key";

  const auto encrypted = AESData::encryptedDataUsingAESKey("secret", key);
  ASSERT_TRUE(encrypted);
  EXPECT_FALSE(AESData::decryptedDataUsingAESKey(*encrypted, QByteArray(24, 'k'))) << "key of another length";
  EXPECT_FALSE(AESData::decryptedDataUsingAESKey(encrypted->left(16), key)) << "IV without ciphertext";
  EXPECT_FALSE(AESData::decryptedDataUsingAESKey(encrypted->left(encrypted->size() - 1), key)) << "cut block";

  const auto first = AESData::encryptedDataUsingAESKey("same text", key);
  const auto second = AESData::encryptedDataUsingAESKey("same text", key);
  ASSERT_TRUE(first && second);
  EXPECT_NE(first->left(16), second->left(16));
  EXPECT_NE(*first, *second);
}

}  // namespace
