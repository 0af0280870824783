#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The cipher and the text coding under which secrets are stored. May be called from any thread;
/// nothing of what passes through is kept.
class SENTREL_API Cryptography {
 public:
  using Bytes = std::vector<std::uint8_t>;
  using ByteView = std::span<const std::uint8_t>;
  using Key = std::array<std::uint8_t, 32>;
  using InitialisationVector = std::array<std::uint8_t, 16>;

  virtual ~Cryptography() = default;

  /// AES-256 in CBC mode with PKCS#7 padding: whole blocks of 16 bytes, at least one, or none when
  /// the cipher fails.
  virtual std::optional<Bytes> encrypt(ByteView plain, const Key& key,
                                       const InitialisationVector& iv) const = 0;

  /// The reverse: none when `enciphered` is no whole number of blocks, is empty or is wrongly
  /// padded. A wrong key is not always noticed. The caller wipes the result.
  virtual std::optional<Bytes> decrypt(ByteView enciphered, const Key& key,
                                       const InitialisationVector& iv) const = 0;

  /// Base64 in the standard alphabet, padded, without line breaks.
  virtual std::string encodeBase64(ByteView bytes) const = 0;

  /// Takes exactly what encodeBase64() makes, and answers none for anything else.
  virtual std::optional<Bytes> decodeBase64(std::string_view text) const = 0;

  /// Overwrites `bytes` with zeros, also where nothing reads them afterwards.
  virtual void wipe(std::span<std::uint8_t> bytes) const = 0;
};

}  // namespace sentrel
