#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "sentrel/platform/Cryptography.h"
#include "sentrel/platform/Export.h"

namespace sentrel {

/// How many digits a prompt's row takes. No passcode of another length can be typed there.
inline constexpr std::size_t passcodeLength = 6;

/// The key under which every device stores its passcode. It keeps a passcode from being read over
/// a shoulder, not from whoever has the file and this library.
inline constexpr std::string_view passcodeCipherKey = "kzt.plimsox.vantereli";

/// AES-256 in CBC mode with PKCS#7 padding and an initialisation vector of zeros, under `key`,
/// which zeros lengthen to 32 bytes. None when the cipher fails; a key longer than that fails too.
/// The caller wipes what is secret.
SENTREL_API std::optional<Cryptography::Bytes> sn__AES256EncryptWithKey(
    const Cryptography& cryptography, Cryptography::ByteView data, std::string_view key);
SENTREL_API std::optional<Cryptography::Bytes> sn__AES256DecryptWithKey(
    const Cryptography& cryptography, Cryptography::ByteView data, std::string_view key);

/// Whether the two are equal, in a time that depends on the length of `candidate` alone.
bool equalInConstantTime(Cryptography::ByteView secret, std::string_view candidate) noexcept;

}  // namespace sentrel
