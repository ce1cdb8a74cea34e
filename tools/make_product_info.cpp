// Builds the ProductInfo archive from its text description: every field is
// encrypted with a key made afresh for each build, which travels in the
// archive's encryptionKey field.
//
// Usage: make-product-info <description.txt> <ProductInfo>

#include <QFile>
#include <QTextStream>

#include <openssl/rand.h>

#include <cstdio>

#include "CommonClass/AESData.h"
#include "CommonClass/CommonClass.h"
#include "ValueObject/ProductInfo.h"

namespace {

// The field named `key`, or nullptr; the key is not one of the text fields.
QByteArray ProductInfo::*textField(const QString& key) {
  for (const ProductInfo::Field& field : ProductInfo::fields()) {
    if (key == QLatin1String(field.key) && field.member != &ProductInfo::encryptionKey) return field.member;
  }
  return nullptr;
}

int fail(const char* message, const QString& detail) {
  std::fprintf(stderr, "make-product-info: %s: %s\n", message, detail.toLocal8Bit().constData());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make-product-info <description.txt> <ProductInfo>\n");
    return 2;
  }
  QFile description(QString::fromLocal8Bit(argv[1]));
  if (!description.open(QIODevice::ReadOnly | QIODevice::Text)) return fail("cannot read", description.fileName());

  ProductInfo info;
  info.encryptionKey.resize(32);
  if (RAND_bytes(reinterpret_cast<unsigned char*>(info.encryptionKey.data()), 32) != 1) {
    return fail("no random key", QString());
  }

  QTextStream lines(&description);
  while (!lines.atEnd()) {
    const QString line = lines.readLine().trimmed();
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    const auto field = textField(line.left(equals).trimmed());
    if (equals < 0 || field == nullptr) return fail("unknown line", line);
    const auto encrypted = AESData::encryptedDataUsingAESKey(line.mid(equals + 1).trimmed().toUtf8(), info.encryptionKey);
    if (!encrypted) return fail("cannot encrypt", line);
    info.*field = *encrypted;
  }

  if (!CommonClass::saveObject(info, QString::fromLocal8Bit(argv[2]))) return fail("cannot write", QString::fromLocal8Bit(argv[2]));
  return 0;
}
