// Asks the library one question, on ports that cost nothing, and ends.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <memory>
#include <string>

#include "sentrel/Process.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace {

class Bundle final : public sentrel::MainBundle {
 public:
  const std::string& bundleIdentifier() const override { return identifier_; }
  std::string_view localizedString(std::string_view key) const override { return key; }

 private:
  std::string identifier_{sentrel::springBoardBundleIdentifier};
};

class Files final : public sentrel::PropertyListFiles {
 public:
  sentrel::DictionaryReading readDictionary(const std::string& path) const override {
    if (path != sentrel::settingsFilePath) return sentrel::DictionaryReading::Outcome::absent;
    return sentrel::PropertyList::Dictionary{
        {"SentrelEnabled", true},
        {"SentrelApplications", sentrel::PropertyList::Array{"com.example.notes"}}};
  }
  bool writeDictionary(const std::string&, const sentrel::PropertyList::Dictionary&) override {
    return false;
  }
  std::unique_ptr<Lock> lock(const std::string&) override { return nullptr; }
};

class English final : public sentrel::CaseMapping {
 public:
  std::string lowercased(std::string_view text) const override {
    return mapped(text, std::tolower);
  }
  std::string uppercased(std::string_view text) const override {
    return mapped(text, std::toupper);
  }

 private:
  static std::string mapped(std::string_view text, int (*map)(int)) {
    std::string result(text);
    for (char& character : result)
      character = static_cast<char>(map(static_cast<unsigned char>(character)));
    return result;
  }
};

class Center final : public sentrel::NotificationCenter {
 public:
  void post(sentrel::Notification) override {}
  sentrel::Observation addObserver(const std::string&, Observer) override { return nullptr; }
};

class NoClock final : public sentrel::Clock {
 public:
  sentrel::WallTime now() const override { return {}; }
  sentrel::SteadyTime steadyNow() const override { return {}; }
};

class NoQueue final : public sentrel::MainQueue {
 public:
  void async(Block) override {}
  void after(sentrel::Seconds, Block) override {}
  std::uint64_t turn() const override { return 0; }
};

class NoFiles final : public sentrel::FileSystem {
 public:
  bool fileExists(const std::string&) const override { return false; }
};

class NoCipher final : public sentrel::Cryptography {
 public:
  std::optional<Bytes> encrypt(ByteView, const Key&, const InitialisationVector&) const override {
    return std::nullopt;
  }
  std::optional<Bytes> decrypt(ByteView, const Key&, const InitialisationVector&) const override {
    return std::nullopt;
  }
  std::string encodeBase64(ByteView) const override { return {}; }
  std::optional<Bytes> decodeBase64(std::string_view) const override { return std::nullopt; }
  void wipe(std::span<std::uint8_t> bytes) const override { std::ranges::fill(bytes, 0); }
};

class System final : public sentrel::SystemFacts {
 public:
  std::string systemVersion() const override { return "14.0"; }
};

}  // namespace

int main() {
  sentrel::Platform platform;
  platform.mainBundle = std::make_shared<Bundle>();
  platform.propertyListFiles = std::make_shared<Files>();
  platform.caseMapping = std::make_shared<English>();
  platform.darwinCenter = platform.distributedCenter = platform.localCenter =
      std::make_shared<Center>();
  platform.clock = std::make_shared<NoClock>();
  platform.mainQueue = std::make_shared<NoQueue>();
  platform.files = std::make_shared<NoFiles>();
  platform.cryptography = std::make_shared<NoCipher>();
  platform.system = std::make_shared<System>();
  sentrel::Process process(std::move(platform));
  sentrel::Process::setMain(&process);

  const auto& settings = sentrel::SNSettings::sharedSettings();
  const bool locked = settings.isAppProtected("com.example.notes");
  const bool open = settings.isAppProtected("com.example.maps");
  std::printf("notes %s, maps %s\n", locked ? "protected" : "open", open ? "protected" : "open");
  return locked && !open ? 0 : 1;
}
