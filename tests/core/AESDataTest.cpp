#include <gtest/gtest.h>

#include "CommonClass/AESData.h"

TEST(AESData, RoundTrip) {
  const QByteArray key(16, 'k');
  auto enc = AESData::encryptedDataUsingAESKey("hello", key);
  ASSERT_TRUE(enc);
  EXPECT_EQ(*AESData::decryptedDataUsingAESKey(*enc, key), QByteArray("hello"));
}
