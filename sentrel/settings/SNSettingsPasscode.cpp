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

/// A plain text that overwrites itself in the end.
class PlainText {
 public:
  PlainText(const Cryptography& cryptography, Bytes bytes)
      : cryptography_(cryptography), bytes_(std::move(bytes)) {}
  ~PlainText() { cryptography_.wipe(bytes_); }
  PlainText(const PlainText&) = delete;
  PlainText& operator=(const PlainText&) = delete;

  const Bytes& bytes() const noexcept { return bytes_; }
  bool isText() const noexcept { return isUtf8(textOf(bytes_)); }

 private:
  const Cryptography& cryptography_;
  Bytes bytes_;
};

std::optional<Bytes> decipher(const Cryptography& cryptography, std::string_view stored) {
  const auto enciphered = cryptography.decodeBase64(stored);
  if (!enciphered) return std::nullopt;
  return sn__AES256DecryptWithKey(cryptography, *enciphered, passcodeCipherKey);
}

}  // namespace

std::optional<std::string> SNSettings::encryptString(std::string_view plain) const {
  if (!isUtf8(plain)) return std::nullopt;
  const Cryptography& cryptography = *platform_.cryptography;
  const auto enciphered = sn__AES256EncryptWithKey(cryptography, bytesOf(plain), passcodeCipherKey);
  return enciphered ? std::optional(cryptography.encodeBase64(*enciphered)) : std::nullopt;
}

std::optional<std::string> SNSettings::decryptString(std::string_view stored) const {
  auto deciphered = decipher(*platform_.cryptography, stored);
  if (!deciphered) return std::nullopt;
  const PlainText plain(*platform_.cryptography, std::move(*deciphered));
  return plain.isText() ? std::optional<std::string>(textOf(plain.bytes())) : std::nullopt;
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
  auto deciphered = decipher(*platform_.cryptography, *values_.passcode);
  if (!deciphered) return false;
  const PlainText plain(*platform_.cryptography, std::move(*deciphered));
  return plain.isText() && equalInConstantTime(plain.bytes(), candidate);
}

}  // namespace sentrel
