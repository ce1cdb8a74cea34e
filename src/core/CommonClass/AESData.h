// AES-CBC with PKCS#7 padding for the ProductInfo archive. The key length
// (16, 24 or 32 bytes) picks AES-128, -192 or -256. Encrypted data is a
// random 16-byte IV followed by the ciphertext.
#pragma once

#include <QByteArray>

#include <optional>

class AESData {
 public:
  // IV from /dev/urandom || ciphertext; nullopt on a bad key or a failed read.
  static std::optional<QByteArray> encryptedDataUsingAESKey(const QByteArray& data, const QByteArray& key);
  // nullopt for input shorter than 16 bytes, a bad key, or bad padding.
  static std::optional<QByteArray> decryptedDataUsingAESKey(const QByteArray& data, const QByteArray& key);
};
