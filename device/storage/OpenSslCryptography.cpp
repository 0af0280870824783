#include "device/storage/OpenSslCryptography.h"

#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>

#include <algorithm>
#include <limits>
#include <mutex>

#include "device/storage/Base64.h"

namespace sentrel::storage {
namespace {

constexpr std::size_t blockSize = 16;
constexpr std::size_t maximumLength = std::numeric_limits<int>::max() - blockSize;

/// How many bytes of the last block are padding; 0 when it is not padded rightly.
std::size_t paddingOf(const Cryptography::Bytes& plain) {
  const std::size_t count = plain.back();
  if (count > blockSize) return 0;
  const bool whole = std::all_of(plain.end() - static_cast<std::ptrdiff_t>(count), plain.end(),
                                 [count](std::uint8_t byte) { return byte == count; });
  return whole ? count : 0;
}

}  // namespace

/// EVP_Cipher() works on whole blocks alone; padding is ours. OpenSSL's own would keep the last
/// block of plain text in the context.
class OpenSslCryptography::Cipher {
 public:
  enum Direction : int { deciphering = 0, enciphering = 1 };

  Cipher() {
    // Fetched once: looking the cipher up by name costs more than using it.
    algorithm_ = EVP_CIPHER_fetch(nullptr, "AES-256-CBC", nullptr);
    context_ = EVP_CIPHER_CTX_new();
    ready_ = algorithm_ && context_ &&
             EVP_CipherInit_ex2(context_, algorithm_, nullptr, nullptr, enciphering, nullptr) == 1;
    ERR_clear_error();
  }

  ~Cipher() {
    EVP_CIPHER_CTX_free(context_);
    EVP_CIPHER_free(algorithm_);
  }

  Cipher(const Cipher&) = delete;
  Cipher& operator=(const Cipher&) = delete;

  /// Replaces whole blocks by what the cipher makes of them.
  bool run(Direction direction, Bytes& blocks, const Key& key, const InitialisationVector& iv) {
    const std::lock_guard lock(mutex_);
    const auto size = static_cast<unsigned>(blocks.size());
    const bool done =
        ready_ &&
        EVP_CipherInit_ex2(context_, nullptr, key.data(), iv.data(), direction, nullptr) == 1 &&
        EVP_Cipher(context_, blocks.data(), blocks.data(), size) == static_cast<int>(size);
    // What failed here must not surface as somebody else's error on this thread.
    if (!done) ERR_clear_error();
    return done;
  }

 private:
  std::mutex mutex_;
  EVP_CIPHER* algorithm_ = nullptr;
  EVP_CIPHER_CTX* context_ = nullptr;
  bool ready_ = false;
};

OpenSslCryptography::OpenSslCryptography() : cipher_(std::make_unique<Cipher>()) {}

OpenSslCryptography::~OpenSslCryptography() = default;

std::optional<Cryptography::Bytes> OpenSslCryptography::encrypt(
    ByteView plain, const Key& key, const InitialisationVector& iv) const {
  if (plain.size() > maximumLength) return std::nullopt;
  const std::size_t padding = blockSize - plain.size() % blockSize;
  Bytes blocks;
  // Reserved at once: growing would leave copies of the plain text behind.
  blocks.reserve(plain.size() + padding);
  blocks.assign(plain.begin(), plain.end());
  blocks.resize(plain.size() + padding, static_cast<std::uint8_t>(padding));
  if (cipher_->run(Cipher::enciphering, blocks, key, iv)) return blocks;
  wipe(blocks);
  return std::nullopt;
}

std::optional<Cryptography::Bytes> OpenSslCryptography::decrypt(
    ByteView enciphered, const Key& key, const InitialisationVector& iv) const {
  const bool wholeBlocks = !enciphered.empty() && enciphered.size() % blockSize == 0;
  if (!wholeBlocks || enciphered.size() > maximumLength) return std::nullopt;
  Bytes blocks(enciphered.begin(), enciphered.end());
  const bool done = cipher_->run(Cipher::deciphering, blocks, key, iv);
  const std::size_t padding = done ? paddingOf(blocks) : 0;
  if (padding == 0) {
    wipe(blocks);
    return std::nullopt;
  }
  blocks.erase(blocks.end() - static_cast<std::ptrdiff_t>(padding), blocks.end());
  return blocks;
}

std::string OpenSslCryptography::encodeBase64(ByteView bytes) const {
  return storage::encodeBase64(bytes);
}

std::optional<Cryptography::Bytes> OpenSslCryptography::decodeBase64(std::string_view text) const {
  return storage::decodeBase64(text);
}

void OpenSslCryptography::wipe(std::span<std::uint8_t> bytes) const {
  OPENSSL_cleanse(bytes.data(), bytes.size());
}

}  // namespace sentrel::storage
