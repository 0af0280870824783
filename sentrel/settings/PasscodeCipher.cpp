#include "sentrel/settings/PasscodeCipher.h"

#include <algorithm>

namespace sentrel {
namespace {

constexpr Cryptography::InitialisationVector noVector{};

std::optional<Cryptography::Key> lengthened(std::string_view text) {
  Cryptography::Key key{};
  if (text.size() > key.size()) return std::nullopt;
  std::ranges::copy(text, key.begin());
  return key;
}

}  // namespace

std::optional<Cryptography::Bytes> sn__AES256EncryptWithKey(const Cryptography& cryptography,
                                                            Cryptography::ByteView data,
                                                            std::string_view key) {
  const auto bytes = lengthened(key);
  return bytes ? cryptography.encrypt(data, *bytes, noVector) : std::nullopt;
}

std::optional<Cryptography::Bytes> sn__AES256DecryptWithKey(const Cryptography& cryptography,
                                                            Cryptography::ByteView data,
                                                            std::string_view key) {
  const auto bytes = lengthened(key);
  return bytes ? cryptography.decrypt(data, *bytes, noVector) : std::nullopt;
}

bool equalInConstantTime(Cryptography::ByteView secret, std::string_view candidate) noexcept {
  unsigned difference = secret.size() == candidate.size() ? 0 : 1;
  for (std::size_t i = 0; i < candidate.size(); ++i) {
    const unsigned char other = secret.empty() ? 0 : secret[i % secret.size()];
    difference |= static_cast<unsigned>(other ^ static_cast<unsigned char>(candidate[i]));
  }
  return difference == 0;
}

}  // namespace sentrel
