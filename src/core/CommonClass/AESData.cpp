#include "AESData.h"

#include <openssl/evp.h>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

constexpr int kBlockSize = 16;

const EVP_CIPHER* cipherForKey(const QByteArray& key) {
  switch (key.size()) {
    case 16: return EVP_aes_128_cbc();
    case 24: return EVP_aes_192_cbc();
    case 32: return EVP_aes_256_cbc();
    default: return nullptr;
  }
}

// Reads exactly `size` random bytes, retrying reads a signal interrupted.
bool readRandom(unsigned char* buffer, size_t size) {
  const int fd = ::open("/dev/urandom", O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  size_t done = 0;
  while (done < size) {
    const ssize_t got = ::read(fd, buffer + done, size - done);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<size_t>(got);
  }
  ::close(fd);
  return done == size;
}

using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)>;

// Runs one whole encryption or decryption; the output has room for one
// extra block, as padding may need.
std::optional<QByteArray> runCipher(bool encrypt, const QByteArray& key, const unsigned char* iv,
                                    const unsigned char* input, int inputSize) {
  const EVP_CIPHER* cipher = cipherForKey(key);
  if (cipher == nullptr) return std::nullopt;
  CipherContext context(EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free);
  if (!context) return std::nullopt;
  const auto* keyBytes = reinterpret_cast<const unsigned char*>(key.constData());
  if (EVP_CipherInit_ex(context.get(), cipher, nullptr, keyBytes, iv, encrypt ? 1 : 0) != 1) return std::nullopt;

  QByteArray output(inputSize + kBlockSize, Qt::Uninitialized);
  auto* out = reinterpret_cast<unsigned char*>(output.data());
  int written = 0;
  int finalWritten = 0;
  if (EVP_CipherUpdate(context.get(), out, &written, input, inputSize) != 1) return std::nullopt;
  if (EVP_CipherFinal_ex(context.get(), out + written, &finalWritten) != 1) return std::nullopt;
  output.truncate(written + finalWritten);
  return output;
}

}  // namespace

std::optional<QByteArray> AESData::encryptedDataUsingAESKey(const QByteArray& data, const QByteArray& key) {
  if (cipherForKey(key) == nullptr) return std::nullopt;
  unsigned char iv[kBlockSize];
  if (!readRandom(iv, sizeof iv)) return std::nullopt;
  auto ciphertext = runCipher(true, key, iv, reinterpret_cast<const unsigned char*>(data.constData()),
                              static_cast<int>(data.size()));
  if (!ciphertext) return std::nullopt;
  QByteArray result(reinterpret_cast<const char*>(iv), kBlockSize);
  result.append(*ciphertext);
  return result;
}

std::optional<QByteArray> AESData::decryptedDataUsingAESKey(const QByteArray& data, const QByteArray& key) {
  if (data.size() < kBlockSize) return std::nullopt;
  const auto* bytes = reinterpret_cast<const unsigned char*>(data.constData());
  return runCipher(false, key, bytes, bytes + kBlockSize, static_cast<int>(data.size() - kBlockSize));
}
