#include <optional>
#include <utility>

#include "sentrel/platform/Utf8.h"
#include "sentrel/settings/PasscodeCipher.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {
namespace {

using Bytes = Cryptography::Bytes;

std::string_view textOf(const Bytes& bytes) noexcept {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Cryptography::ByteView bytesOf(std::string_view text) noexcept {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// A plain text that overwrites itself in the end, unless it was handed on.
class PlainText {
 public:
  PlainText(const Cryptography& cryptography, Bytes bytes)
      : cryptography_(cryptography), bytes_(std::move(bytes)) {}
  ~PlainText() {
    if (!bytes_.empty()) cryptography_.wipe(bytes_);
  }
  PlainText(PlainText&&) = default;
  PlainText& operator=(PlainText&&) = delete;

  const Bytes& bytes() const noexcept { return bytes_; }
  bool isText() const noexcept { return isUtf8(textOf(bytes_)); }

 private:
  const Cryptography& cryptography_;
  Bytes bytes_;
};

/// None for what encryptString() cannot have made.
std::optional<PlainText> decipher(const Cryptography& cryptography, std::string_view stored) {
  const auto enciphered = cryptography.decodeBase64(stored);
  if (!enciphered) return std::nullopt;
  auto bytes = sn__AES256DecryptWithKey(cryptography, *enciphered, passcodeCipherKey);
  if (!bytes) return std::nullopt;
  std::optional<PlainText> plain(std::in_place, cryptography, std::move(*bytes));
  if (!plain->isText()) plain.reset();
  return plain;
}

}  // namespace

std::optional<std::string> SNSettings::encryptString(std::string_view plain) const {
  if (!isUtf8(plain)) return std::nullopt;
  const Cryptography& cryptography = *platform_.cryptography;
  const auto enciphered = sn__AES256EncryptWithKey(cryptography, bytesOf(plain), passcodeCipherKey);
  return enciphered ? std::optional(cryptography.encodeBase64(*enciphered)) : std::nullopt;
}

std::optional<std::string> SNSettings::decryptString(std::string_view stored) const {
  const auto plain = decipher(*platform_.cryptography, stored);
  return plain ? std::optional<std::string>(textOf(plain->bytes())) : std::nullopt;
}

bool SNSettings::savePasscode(std::optional<std::string_view> plain) {
  if (!plain || !isUtf8(*plain)) return false;
  return updateSettingsData(settings_keys::passcode, encryptString(*plain),
                            /*postNotification=*/true);
}

bool SNSettings::removePasscode() {
  return updateSettingsData(settings_keys::passcode, std::nullopt, /*postNotification=*/true);
}

bool SNSettings::validatePasscode(std::string_view candidate) const {
  if (!values_.passcode) return false;
  const auto plain = decipher(*platform_.cryptography, *values_.passcode);
  return plain && equalInConstantTime(plain->bytes(), candidate);
}

}  // namespace sentrel
