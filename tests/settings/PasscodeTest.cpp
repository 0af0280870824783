#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

/// Forwards to the device's cipher; fails on request, and remembers what was wiped.
class WatchedCryptography final : public Cryptography {
 public:
  explicit WatchedCryptography(std::shared_ptr<Cryptography> real) : real_(std::move(real)) {}

  std::optional<Bytes> encrypt(ByteView plain, const Key& key,
                               const InitialisationVector& iv) const override {
    return fails ? std::nullopt : real_->encrypt(plain, key, iv);
  }
  std::optional<Bytes> decrypt(ByteView enciphered, const Key& key,
                               const InitialisationVector& iv) const override {
    ++decryptions;
    return real_->decrypt(enciphered, key, iv);
  }
  std::string encodeBase64(ByteView bytes) const override { return real_->encodeBase64(bytes); }
  std::optional<Bytes> decodeBase64(std::string_view text) const override {
    return real_->decodeBase64(text);
  }
  void wipe(std::span<std::uint8_t> bytes) const override {
    wiped.emplace_back(bytes.begin(), bytes.end());
    real_->wipe(bytes);
  }

  bool fails = false;
  mutable int decryptions = 0;
  mutable std::vector<std::string> wiped;

 private:
  std::shared_ptr<Cryptography> real_;
};

class Passcode : public TwoProcesses {
 protected:
  Passcode() { platform().cryptography = cryptography; }

  Platform& platform() { return springBoard->process().platform(); }

  void usePasscode(PropertyList stored) { useSettings({{"SentrelPasscode", std::move(stored)}}); }

  std::optional<PropertyList> storedPasscode() { return settings().valueForKey("SentrelPasscode"); }

  std::size_t changesPosted() { return posted(notifications::settingsChanged); }

  std::shared_ptr<WatchedCryptography> cryptography =
      std::make_shared<WatchedCryptography>(platform().cryptography);
};

/// Made on the command line: the text on standard input of
///   openssl enc -aes-256-cbc -K 6b7a742e706c696d736f782e76616e746572656c69<22 zeros>
///     -iv <32 zeros> | base64
struct Vector {
  const char* plain;
  const char* stored;
};

constexpr Vector vectors[] = {{"", "ElmvSfc8WnzJtz7tRnTMqg=="},
                              {"1234", "E0hP4cdYs/QV4edMPWZVZg=="},
                              {"Grüße, 世界", "kcws+4MJqPjL8tRveF6jRQ=="},
                              {"0123456789abcdef", "DYePAdSlti8IXomAUVspytc49XK01WkLnxJfb9u8yso="}};

TEST_F(Passcode, StoredFormIsThatOfTheCommandLine) {
  for (const Vector& vector : vectors) {
    SCOPED_TRACE(vector.plain);
    EXPECT_EQ(settings().encryptString(vector.plain), vector.stored);
    EXPECT_EQ(settings().decryptString(vector.stored), vector.plain);
    usePasscode(vector.stored);
    EXPECT_TRUE(settings().validatePasscode(vector.plain));
  }
}

TEST_F(Passcode, OnlyTheExactTextIsValid) {
  usePasscode(vectors[1].stored);
  EXPECT_TRUE(settings().validatePasscode("1234"));
  for (std::string_view candidate :
       {"", "123", "12345", "1235", "0234", "12341234", " 1234", "1234\n", "\xff\xfe", "1234\xff"})
    EXPECT_FALSE(settings().validatePasscode(candidate)) << candidate;
  EXPECT_FALSE(settings().validatePasscode(std::string_view("1234\0", 5)));
  EXPECT_FALSE(settings().validatePasscode(std::string(1'000'000, '1')));
  usePasscode(*settings().encryptString("é"));
  EXPECT_FALSE(settings().validatePasscode("e\u0301"));
}

TEST_F(Passcode, NothingIsValidForWhatCannotBeRead) {
  const PropertyList unreadable[] = {"",
                                     "1234",
                                     "E0hP4cdYs/QV4edMPWZVZg",      // no padding
                                     "E0hP4cdYs/QV4edMPWZVZg==\n",  // a line break
                                     "E0hP4cdYs_QV4edMPWZVZg==",    // another alphabet
                                     "E0hP4cdYs/QV4edMPWZV",        // no whole block
                                     "VH9Ww6/zPINFHRXvx6x5Zg==",    // zeros for padding
                                     "JOmODOii9O46xkgqPyfztg==",    // padding bytes that differ
                                     "2T13flGqn6uwLXJc7/srIg==",  // deciphers to what is not UTF-8
                                     PropertyList::Data{0x13, 0x48},
                                     1234};
  for (const PropertyList& stored : unreadable) {
    SCOPED_TRACE(describe(stored));
    usePasscode(stored);
    for (std::string_view candidate : {"", "1234",
                                       "\xff\xfe"
                                       "12"})
      EXPECT_FALSE(settings().validatePasscode(candidate)) << candidate;
    const auto* text = stored.as<std::string>();
    EXPECT_EQ(text ? settings().decryptString(*text) : std::nullopt, std::nullopt);
  }
  useSettings({});
  EXPECT_FALSE(settings().validatePasscode(""));
}

TEST_F(Passcode, SavingChangesTheFileAndReloadingTheAnswer) {
  usePasscode(vectors[1].stored);
  EXPECT_TRUE(settings().savePasscode("0000"));
  EXPECT_EQ(changesPosted(), 1U);
  EXPECT_TRUE(settings().validatePasscode("1234"));
  EXPECT_FALSE(settings().validatePasscode("0000"));
  settings().reloadSettings();
  EXPECT_FALSE(settings().validatePasscode("1234"));
  EXPECT_TRUE(settings().validatePasscode("0000"));

  EXPECT_TRUE(settings().removePasscode());
  EXPECT_EQ(changesPosted(), 2U);
  EXPECT_EQ(storedPasscode(), std::nullopt);
  EXPECT_TRUE(settings().validatePasscode("0000"));
  settings().reloadSettings();
  EXPECT_FALSE(settings().validatePasscode("0000"));
}

TEST_F(Passcode, OnlyAFailingCipherDeletesTheStoredOne) {
  usePasscode(vectors[1].stored);
  EXPECT_FALSE(settings().savePasscode(std::nullopt));
  EXPECT_FALSE(settings().savePasscode("\xc3"));
  EXPECT_EQ(storedPasscode(), PropertyList(vectors[1].stored));
  EXPECT_EQ(changesPosted(), 0U);
  cryptography->fails = true;
  EXPECT_TRUE(settings().savePasscode("0000"));
  EXPECT_EQ(storedPasscode(), std::nullopt);
}

TEST_F(Passcode, PlainTextIsDecipheredAfreshAndWipedEachTime) {
  usePasscode(vectors[1].stored);
  settings().validatePasscode("1234");
  settings().validatePasscode("no");
  settings().decryptString(vectors[1].stored);
  EXPECT_EQ(cryptography->decryptions, 3);
  EXPECT_THAT(cryptography->wiped, ::testing::ElementsAre("1234", "1234", "1234"));
}

class TrustedNetworks : public TwoProcesses {};

TEST_F(TrustedNetworks, KeepOrderAndDuplicatesInMemoryAndFile) {
  useSettings({});
  EXPECT_TRUE(settings().addToWiFiNetwork("b"));
  EXPECT_TRUE(settings().addToWiFiNetwork("a"));
  EXPECT_TRUE(settings().addToWiFiNetwork("b"));
  EXPECT_EQ(settings().wifiNetworks(), (Array{"b", "a", "b"}));
  EXPECT_EQ(settingsFile().at("SentrelTrustedNetworks"), PropertyList(Array{"b", "a", "b"}));
  EXPECT_TRUE(settings().removeFromWiFiNetwork("b"));
  EXPECT_EQ(settingsFile().at("SentrelTrustedNetworks"), PropertyList(Array{"a"}));
  EXPECT_TRUE(settings().hasWiFiNetwork("a"));
  EXPECT_FALSE(settings().hasWiFiNetwork("A"));
  EXPECT_FALSE(settings().hasWiFiNetwork("b"));
  EXPECT_EQ(posted(notifications::settingsChanged), 4U);
}

TEST_F(TrustedNetworks, ManagerAsksTheHomeScreenForEachHandleItLacks) {
  device.wifi().known = {"home", "work"};
  device.wifi().joined = "work";
  struct Access {
    bool manager;
    bool client;
    std::vector<std::string> asked;
  };
  const std::string known = "com.quorvin.sentrel.app.knownNetWorks";
  const std::string current = "com.quorvin.sentrel.app.lastConnectedNetWork";
  const Access accesses[] = {{true, true, {}},
                             {false, true, {known}},
                             {true, false, {current}},
                             {false, false, {known, current}}};
  for (const Access& access : accesses) {
    app->wifi().setHasManager(access.manager);
    app->wifi().setHasClient(access.client);
    device.messages().forgetSent();
    inApp([] {
      const auto& manager = SNWiFiManager::sharedManager();
      EXPECT_EQ(manager.knownNetworks(), (Array{"home", "work"}));
      EXPECT_EQ(manager.currentNetWork(), (Dictionary{{"SSID", "work"}}));
    });
    std::vector<std::string> asked;
    for (const auto& message : device.messages().sent()) {
      EXPECT_EQ(message.userInfo, std::nullopt);
      asked.push_back(message.name);
    }
    EXPECT_EQ(asked, access.asked);
  }
}

}  // namespace
}  // namespace sentrel
