// What storage costs beside the bare libraries beneath it: each pair below stands on the same
// input.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <openssl/evp.h>
#include <plist/plist.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "device/storage/OpenSslCryptography.h"
#include "device/storage/PlistFiles.h"
#include "device/storage/PropertyListCoding.h"

namespace sentrel::storage {
namespace {

const std::string devicePath = "/settings.plist";

/// The size of a heavy user's settings: 36 keys, among them five lists of 300 names and 40 folder
/// records of 12 icons.
PropertyList::Dictionary heavySettings() {
  PropertyList::Dictionary settings;
  for (int i = 0; i < 30; ++i)
    settings.emplace("SentrelOption" + std::to_string(i), i % 2 == 0);
  for (int list = 0; list < 5; ++list) {
    PropertyList::Array names;
    for (int i = 0; i < 300; ++i)
      names.push_back("com.vendor" + std::to_string(i) + ".application");
    settings.emplace("SentrelList" + std::to_string(list), std::move(names));
  }
  PropertyList::Array folders;
  for (int folder = 0; folder < 40; ++folder) {
    PropertyList::Array icons;
    for (int i = 0; i < 12; ++i)
      icons.push_back(PropertyList::Dictionary{
          {"SentrelBundleIdentifier", "com.vendor.app" + std::to_string(folder * 12 + i)}});
    folders.push_back(PropertyList::Dictionary{{"SentrelFolderDisplayName", "Folder"},
                                               {"SentrelAllIcons", std::move(icons)}});
  }
  settings.emplace("SentrelFolders", std::move(folders));
  return settings;
}

/// A folder of its own with the settings in it, gone afterwards.
class SettingsFolder {
 public:
  SettingsFolder() {
    auto name = (std::filesystem::temp_directory_path() / "sentrel-bench-XXXXXX").string();
    if (!::mkdtemp(name.data())) std::abort();
    folder_ = name;
    if (!files().writeDictionary(devicePath, heavySettings())) std::abort();
  }
  ~SettingsFolder() { std::filesystem::remove_all(folder_); }

  PlistFiles files() const { return PlistFiles(DeviceRoot(folder_)); }
  std::string path(const std::string& name) const { return folder_ + "/" + name; }
  const std::string& folder() const { return folder_; }

 private:
  std::string folder_;
};

void loadSettings(benchmark::State& state) {
  const SettingsFolder folder;
  const PlistFiles files = folder.files();
  for (auto _ : state)
    benchmark::DoNotOptimize(files.readDictionary(devicePath));
}
BENCHMARK(loadSettings)->Name("load/sentrel");

void loadWithLibplist(benchmark::State& state) {
  const std::string bytes = *serializePropertyList(heavySettings());
  for (auto _ : state) {
    plist_t root = nullptr;
    plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    plist_free(root);
  }
  state.SetLabel(std::to_string(bytes.size()) + " bytes");
}
BENCHMARK(loadWithLibplist)->Name("load/libplist");

void writeSettings(benchmark::State& state) {
  const SettingsFolder folder;
  PlistFiles files = folder.files();
  const auto settings = heavySettings();
  for (auto _ : state)
    if (!files.writeDictionary(devicePath, settings)) state.SkipWithError("not written");
}
BENCHMARK(writeSettings)->Name("write/sentrel")->UseRealTime();

bool writeBare(const SettingsFolder& folder, const std::string& bytes) {
  const std::string temporary = folder.path("temporary");
  const int file = ::open(temporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
  bool good = ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  good = ::fsync(file) == 0 && good;
  ::close(file);
  good = std::rename(temporary.c_str(), folder.path("settings.plist").c_str()) == 0 && good;
  const int directory = ::open(folder.folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  good = ::fsync(directory) == 0 && good;
  ::close(directory);
  return good;
}

void writeSettingsBare(benchmark::State& state) {
  const SettingsFolder folder;
  const std::string bytes = *serializePropertyList(heavySettings());
  for (auto _ : state)
    if (!writeBare(folder, bytes)) state.SkipWithError("not written");
}
BENCHMARK(writeSettingsBare)->Name("write/bare")->UseRealTime();

constexpr std::array<std::uint8_t, 6> passcode = {'4', '8', '2', '9', '1', '7'};
constexpr Cryptography::Key key = {'b', 'e', 'n', 'c', 'h'};
constexpr Cryptography::InitialisationVector iv = {};

void encipherPasscode(benchmark::State& state) {
  const OpenSslCryptography cryptography;
  for (auto _ : state)
    benchmark::DoNotOptimize(cryptography.encodeBase64(*cryptography.encrypt(passcode, key, iv)));
}
BENCHMARK(encipherPasscode)->Name("encipher/sentrel");

/// One context, fetched cipher and rooms made once; rekeyed each time.
void encipherWithOpenSsl(benchmark::State& state) {
  EVP_CIPHER* cipher = EVP_CIPHER_fetch(nullptr, "AES-256-CBC", nullptr);
  EVP_CIPHER_CTX* context = EVP_CIPHER_CTX_new();
  EVP_EncryptInit_ex2(context, cipher, nullptr, nullptr, nullptr);
  std::array<unsigned char, 32> blocks;
  std::array<unsigned char, 45> text;
  for (auto _ : state) {
    int length = 0;
    int last = 0;
    EVP_EncryptInit_ex2(context, nullptr, key.data(), iv.data(), nullptr);
    EVP_EncryptUpdate(context, blocks.data(), &length, passcode.data(), passcode.size());
    EVP_EncryptFinal_ex(context, blocks.data() + length, &last);
    benchmark::DoNotOptimize(EVP_EncodeBlock(text.data(), blocks.data(), length + last));
    benchmark::ClobberMemory();
  }
  EVP_CIPHER_CTX_free(context);
  EVP_CIPHER_free(cipher);
}
BENCHMARK(encipherWithOpenSsl)->Name("encipher/openssl");

}  // namespace
}  // namespace sentrel::storage
