#include "device/storage/OpenSslCryptography.h"

#include <gtest/gtest.h>
#include <openssl/err.h>

#include <algorithm>
#include <numeric>
#include <thread>

namespace sentrel::storage {
namespace {

using Bytes = Cryptography::Bytes;

Bytes bytesOf(std::string_view text) {
  return Bytes(text.begin(), text.end());
}

class OpenSslCryptographyTest : public testing::Test {
 protected:
  OpenSslCryptographyTest() {
    const std::string_view text = "kzt.plimsox.vantereli";
    std::copy(text.begin(), text.end(), textKey_.begin());
    std::iota(countingKey_.begin(), countingKey_.end(), std::uint8_t{0});
    std::iota(countingVector_.rbegin(), countingVector_.rend(), std::uint8_t{0});
  }

  OpenSslCryptography cryptography_;
  Cryptography::Key textKey_{};
  Cryptography::Key countingKey_{};
  Cryptography::InitialisationVector zero_{};
  Cryptography::InitialisationVector countingVector_{};
};

/// What `openssl enc -aes-256-cbc -K ... -iv ... -base64 -A` makes of the same text. The settings'
/// tests do the same with the key of the passcode.
TEST_F(OpenSslCryptographyTest, MakesTheBytesOfTheCommandLine) {
  const auto enciphered = cryptography_.encrypt(bytesOf("482917"), countingKey_, countingVector_);
  ASSERT_TRUE(enciphered);
  EXPECT_EQ(cryptography_.encodeBase64(*enciphered), "xDRP3dos7F8MMBsvTKpMAg==");
}

TEST_F(OpenSslCryptographyTest, DeciphersWhatItEnciphered) {
  for (const std::size_t size : {0u, 1u, 15u, 16u, 17u, 32u, 100'000u}) {
    Bytes plain(size);
    std::iota(plain.begin(), plain.end(), std::uint8_t{7});
    const auto enciphered = cryptography_.encrypt(plain, countingKey_, countingVector_);
    ASSERT_TRUE(enciphered);
    EXPECT_EQ(enciphered->size(), size / 16 * 16 + 16);
    EXPECT_EQ(cryptography_.decrypt(*enciphered, countingKey_, countingVector_), plain);
  }
}

TEST_F(OpenSslCryptographyTest, RefusesWhatIsNotWholeOrNotPadded) {
  const Bytes whole = *cryptography_.encrypt(bytesOf("0123456789abcdef"), textKey_, zero_);
  EXPECT_FALSE(cryptography_.decrypt({}, textKey_, zero_));
  EXPECT_FALSE(cryptography_.decrypt(std::span(whole).first(31), textKey_, zero_));
  // The first block alone ends in "f", which is no padding.
  EXPECT_FALSE(cryptography_.decrypt(std::span(whole).first(16), textKey_, zero_));
  EXPECT_EQ(ERR_peek_error(), 0u);
}

/// In CBC a change to the vector changes the first block's plain text alike, so the padding can be
/// set to anything.
TEST_F(OpenSslCryptographyTest, ChecksEveryByteOfThePadding) {
  const Bytes block = *cryptography_.encrypt(bytesOf("1234567890abcd"), textKey_, zero_);
  const auto withPadding = [&](std::uint8_t first, std::uint8_t last) {
    Cryptography::InitialisationVector vector{};
    vector[14] = first ^ 2;
    vector[15] = last ^ 2;
    return cryptography_.decrypt(block, textKey_, vector);
  };
  EXPECT_EQ(withPadding(2, 2), bytesOf("1234567890abcd"));
  EXPECT_EQ(withPadding(2, 1), bytesOf("1234567890abcd\x02"));
  EXPECT_FALSE(withPadding(3, 2));
  EXPECT_FALSE(withPadding(2, 0));
  EXPECT_FALSE(withPadding(16, 16));
  EXPECT_FALSE(withPadding(17, 17));
}

TEST_F(OpenSslCryptographyTest, ServesSeveralThreadsAtOnce) {
  const auto work = [this] {
    for (int i = 0; i < 2000; ++i) {
      const Bytes plain = bytesOf(std::to_string(i));
      const auto enciphered = cryptography_.encrypt(plain, textKey_, zero_);
      if (cryptography_.decrypt(*enciphered, textKey_, zero_) != plain) return false;
    }
    return true;
  };
  bool other = false;
  std::thread thread([&] { other = work(); });
  const bool mine = work();
  thread.join();
  EXPECT_TRUE(mine && other);
}

TEST_F(OpenSslCryptographyTest, TakesBase64AsItMakesItAndNoOther) {
  const std::pair<std::string, std::string> good[] = {
      {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xFB\xFF", "+/8="}};
  for (const auto& [plain, text] : good) {
    EXPECT_EQ(cryptography_.encodeBase64(bytesOf(plain)), text);
    EXPECT_EQ(cryptography_.decodeBase64(text), bytesOf(plain)) << text;
  }
  for (const char* bad : {"Z",     "Zg",       "Zg=",    "=",        "====",    "Z===", "=QUJ",
                          "QU=I",  "QUJD====", "QR==",   "QUJ=QUJD", "QUJD-",   "QUJ-", "QU_D",
                          " QUJD", "QUJD ",    "QUJD\n", "QU\nJD",   "QUJDQUJ", "QU J"})
    EXPECT_FALSE(cryptography_.decodeBase64(bad)) << bad;
  EXPECT_FALSE(cryptography_.decodeBase64(std::string_view("QUJ\0", 4)));
}

TEST_F(OpenSslCryptographyTest, WipesAllOfIt) {
  Bytes bytes(100, 1);
  cryptography_.wipe(bytes);
  EXPECT_EQ(bytes, Bytes(100, 0));
}

}  // namespace
}  // namespace sentrel::storage
