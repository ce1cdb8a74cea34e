// The product information archive delivered beside the executable. Every
// field but encryptionKey holds AES ciphertext (IV || data) of UTF-8 text;
// encryptionKey holds the raw key bytes that decrypt the others.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <span>

class KeyedArchiver;
class KeyedUnarchiver;

class ProductInfo {
 public:
  QByteArray productID;
  QByteArray mainWindowName;
  QByteArray aboutTitle;
  QByteArray helpURL;
  QByteArray supportURL;
  QByteArray homeURL;
  QByteArray copyright;
  QByteArray productVersion;
  QByteArray productBuildDate;
  QByteArray linkID;
  QByteArray encryptionKey;

  static constexpr const char* className = "ProductInfo";

  // The fields in declaration order with their archive keys.
  struct Field {
    const char* key;
    QByteArray ProductInfo::*member;
  };
  static std::span<const Field> fields();

  // Archive keys equal the field names.
  void encodeWithCoder(KeyedArchiver& coder) const;
  static std::optional<ProductInfo> initWithCoder(const KeyedUnarchiver& coder);

  // The plain text of one encrypted field; empty when it does not decrypt.
  QString decryptedText(const QByteArray& field) const;

  bool operator==(const ProductInfo&) const = default;
};
