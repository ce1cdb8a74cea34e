#include "ProductInfo.h"

#include <array>

#include "CommonClass/AESData.h"
#include "CommonClass/KeyedArchive.h"

namespace {
const std::array<ProductInfo::Field, 11> kFields{{
    {"productID", &ProductInfo::productID},
    {"mainWindowName", &ProductInfo::mainWindowName},
    {"aboutTitle", &ProductInfo::aboutTitle},
    {"helpURL", &ProductInfo::helpURL},
    {"supportURL", &ProductInfo::supportURL},
    {"homeURL", &ProductInfo::homeURL},
    {"copyright", &ProductInfo::copyright},
    {"productVersion", &ProductInfo::productVersion},
    {"productBuildDate", &ProductInfo::productBuildDate},
    {"linkID", &ProductInfo::linkID},
    {"encryptionKey", &ProductInfo::encryptionKey},
}};
}  // namespace

std::span<const ProductInfo::Field> ProductInfo::fields() { return kFields; }

void ProductInfo::encodeWithCoder(KeyedArchiver& coder) const {
  for (const auto& [key, field] : kFields) coder.encodeData(key, this->*field);
}

std::optional<ProductInfo> ProductInfo::initWithCoder(const KeyedUnarchiver& coder) {
  ProductInfo info;
  for (const auto& [key, field] : kFields) info.*field = coder.decodeData(key);
  return info;
}

QString ProductInfo::decryptedText(const QByteArray& field) const {
  const auto plain = AESData::decryptedDataUsingAESKey(field, encryptionKey);
  return plain ? QString::fromUtf8(*plain) : QString();
}
