#include "device/storage/Base64.h"

#include <openssl/evp.h>

#include <limits>

namespace sentrel::storage {
namespace {

constexpr std::size_t maximumLength = std::numeric_limits<int>::max() / 2;

unsigned char* asBytes(char* text) {
  return reinterpret_cast<unsigned char*>(text);
}

std::size_t paddingOf(std::string_view text) {
  if (text.ends_with("==")) return 2;
  return text.ends_with('=') ? 1 : 0;
}

}  // namespace

std::string encodeBase64(std::span<const std::uint8_t> bytes) {
  if (bytes.size() > maximumLength) return {};
  // One more character than asked for, because OpenSSL ends the text with a zero.
  std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
  EVP_EncodeBlock(asBytes(text.data()), bytes.data(), static_cast<int>(bytes.size()));
  text.pop_back();
  return text;
}

std::optional<std::vector<std::uint8_t>> decodeBase64(std::string_view text) {
  if (text.size() % 4 != 0 || text.size() > maximumLength) return std::nullopt;
  std::vector<std::uint8_t> bytes(text.size() / 4 * 3);
  const auto* input = reinterpret_cast<const unsigned char*>(text.data());
  if (EVP_DecodeBlock(bytes.data(), input, static_cast<int>(text.size())) < 0) return std::nullopt;
  if (bytes.size() < paddingOf(text)) return std::nullopt;
  bytes.resize(bytes.size() - paddingOf(text));
  // OpenSSL overlooks white space, misplaced padding and spare bits; the way back shows them.
  if (encodeBase64(bytes) != text) return std::nullopt;
  return bytes;
}

}  // namespace sentrel::storage
