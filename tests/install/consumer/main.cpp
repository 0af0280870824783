// A program outside the project that asks the installed library one question.

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
  std::optional<sentrel::PropertyList::Dictionary> readDictionary(
      const std::string& path) const override {
    if (path != sentrel::settingsFilePath) return std::nullopt;
    return sentrel::PropertyList::Dictionary{
        {"SentrelEnabled", true},
        {"SentrelApplications", sentrel::PropertyList::Array{"com.example.notes"}}};
  }
  bool writeDictionary(const std::string&, const sentrel::PropertyList::Dictionary&) override {
    return false;
  }
};

class Radio final : public sentrel::WiFi {
 public:
  bool hasManager() const override { return true; }
  bool hasClient() const override { return true; }
  std::optional<sentrel::PropertyList::Array> knownNetworks() const override { return {}; }
  std::optional<sentrel::PropertyList::Dictionary> currentNetwork() const override { return {}; }
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

class Libraries final : public sentrel::DynamicLibraries {
 public:
  std::shared_ptr<sentrel::DynamicLibrary> open(const std::string&, Binding) override {
    return nullptr;
  }
  bool canOpenBundle(const std::string&) const override { return false; }
  bool loadBundle(const std::string&) override { return false; }
};

}  // namespace

int main() {
  sentrel::Platform platform;
  platform.mainBundle = std::make_shared<Bundle>();
  platform.propertyListFiles = std::make_shared<Files>();
  platform.wifi = std::make_shared<Radio>();
  platform.caseMapping = std::make_shared<English>();
  platform.darwinCenter = std::make_shared<Center>();
  platform.libraries = std::make_shared<Libraries>();
  sentrel::Process process(std::move(platform));
  sentrel::Process::setMain(&process);

  const auto& settings = sentrel::SNSettings::sharedSettings();
  const bool locked = settings.isAppProtected("com.example.notes");
  const bool open = settings.isAppProtected("com.example.maps");
  std::printf("notes %s, maps %s\n", locked ? "protected" : "open", open ? "protected" : "open");
  return locked && !open ? 0 : 1;
}
