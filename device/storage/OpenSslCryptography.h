#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "sentrel/platform/Cryptography.h"

namespace sentrel::storage {

/// The cipher and base64 of OpenSSL. One cipher context serves every call, under a lock, since
/// making one costs several times what a passcode does.
class OpenSslCryptography final : public Cryptography {
 public:
  OpenSslCryptography();
  ~OpenSslCryptography() override;

  std::optional<Bytes> encrypt(ByteView plain, const Key& key,
                               const InitialisationVector& iv) const override;
  std::optional<Bytes> decrypt(ByteView enciphered, const Key& key,
                               const InitialisationVector& iv) const override;
  std::string encodeBase64(ByteView bytes) const override;
  std::optional<Bytes> decodeBase64(std::string_view text) const override;
  void wipe(std::span<std::uint8_t> bytes) const override;

 private:
  class Cipher;
  std::unique_ptr<Cipher> cipher_;
};

}  // namespace sentrel::storage
