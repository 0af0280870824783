#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "device/simulated/DeviceRootReader.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::simulated {
namespace {

namespace fs = std::filesystem;

/// A copy of the example root, to be read and to be damaged.
class PhoneFromItsRoot : public ::testing::Test {
 protected:
  PhoneFromItsRoot() {
    std::string folder = (fs::temp_directory_path() / "sentrel-root-XXXXXX").string();
    root = mkdtemp(folder.data());
    fs::copy(fs::path(SENTREL_SOURCE) / "examples" / "root", root, fs::copy_options::recursive);
  }
  ~PhoneFromItsRoot() override { fs::remove_all(root); }

  DeviceRootReader reader() { return DeviceRootReader(storage::DeviceRoot(root.string())); }

  void replace(const char* path, const std::string& content) {
    fs::create_directories((root / path).parent_path());
    std::ofstream(root / path) << content;
  }

  fs::path root;
  SimulatedDevice device;
};

TEST_F(PhoneFromItsRoot, DescribesThePhone) {
  auto example = reader();
  example.fill(device);
  EXPECT_TRUE(example.complaints().empty());
  EXPECT_EQ(device.system().version, "14.2");
  EXPECT_TRUE(device.sensor().isPearlIDCapable);
  EXPECT_FALSE(device.sensor().isTouchIDCapable);
  EXPECT_EQ(device.wifi().known, (std::vector<std::string>{"Zuhause", "Café Größe 1"}));
  EXPECT_FALSE(device.wifi().joined);
}

TEST_F(PhoneFromItsRoot, InstallsApplicationsUnderTheirTranslatedNames) {
  reader().fill(device);
  const auto* notes = device.applications().find("com.example.notes");
  const auto* bank = device.applications().find("com.example.bank");
  const auto* diagnostics = device.applications().find("com.apple.diagnostics");
  ASSERT_TRUE(notes && bank && diagnostics);
  EXPECT_EQ(notes->displayName, "Notizen");
  EXPECT_FALSE(notes->isSystem);
  EXPECT_EQ(bank->displayName, "Bank");
  EXPECT_TRUE(diagnostics->isSystem);
  EXPECT_TRUE(diagnostics->isHidden);
  EXPECT_FALSE(notes->isHidden);
}

TEST_F(PhoneFromItsRoot, LaysOutTheHomeScreen) {
  reader().fill(device);
  const auto& folders = device.homeScreen().folders();
  ASSERT_EQ(folders.size(), 2U);
  EXPECT_EQ(folders[0]->displayName(), "Spiele");
  EXPECT_EQ(folders[0]->icons().size(), 2U);
  EXPECT_TRUE(device.homeScreen().icon("com.example.maps"));
  EXPECT_TRUE(device.homeScreen().icon("com.example.mail"));
}

TEST_F(PhoneFromItsRoot, GivesEachBundleItsTextsInTheDevicesLanguage) {
  auto example = reader();
  EXPECT_EQ(example.mainBundle("com.example.notes")->localizedString("Cancel"), "Abbrechen");
  EXPECT_EQ(example.mainBundle("com.apple.springboard")->localizedString("Sentrel"),
            "Sentrel-Schutz");
  EXPECT_EQ(example.mainBundle("com.example.absent")->localizedString("Cancel"), "Cancel");
  replace(
      "var/mobile/Library/Preferences/.GlobalPreferences.plist",
      "<plist><dict><key>AppleLanguages</key><array><string>en</string></array></dict></plist>");
  EXPECT_EQ(reader().mainBundle("com.example.notes")->localizedString("Cancel"), "Cancel");
}

struct HardwareKey {
  const char* key;
  const char* value;
  std::string (*read)(SimulatedDevice& device);
  const char* unsaid;
  const char* said;
};

std::string yesOrNo(bool value) {
  return value ? "YES" : "NO";
}

using Device = SimulatedDevice;

const HardwareKey hardwareKeys[] = {
    {"Model", "<string>iPad7,5</string>", [](Device& d) { return d.system().model; }, "iPhone10,3",
     "iPad7,5"},
    {"JoinedNetwork", "<string>Zuhause</string>",
     [](Device& d) { return d.wifi().joined.value_or("none"); }, "none", "Zuhause"},
    {"FrontApplication", "<string>com.example.notes</string>",
     [](Device& d) { return d.applications().front().value_or("none"); }, "none",
     "com.example.notes"},
    {"ConnectedScenes", "<integer>2</integer>",
     [](Device& d) { return std::to_string(d.system().connectedScenes); }, "1", "2"},
    {"ConnectedScenes", "<integer>-1</integer>",
     [](Device& d) { return std::to_string(d.system().connectedScenes); }, "1", "0"},
    {"Assertions", "<array><string>camera</string><true/><string>wallet</string></array>",
     [](Device& d) {
       std::string all;
       for (const std::string& reason : d.sensor().reasons())
         all += reason + ";";
       return all;
     },
     "", "camera;wallet;"},
    {"Locked", "<true/>", [](Device& d) { return yesOrNo(d.lock().isLocked()); }, "NO", "YES"},
    {"PasscodeSet", "<false/>", [](Device& d) { return yesOrNo(d.lock().isPasscodeSet()); }, "YES",
     "NO"},
    {"TouchID", "<true/>", [](Device& d) { return yesOrNo(d.sensor().isTouchIDCapable); }, "NO",
     "YES"},
    {"FaceID", "<false/>", [](Device& d) { return yesOrNo(d.sensor().isPearlIDCapable); }, "YES",
     "NO"},
    {"Enrolled", "<false/>", [](Device& d) { return yesOrNo(d.sensor().isEnrolled); }, "YES", "NO"},
    {"BiometricUnlock", "<false/>", [](Device& d) { return yesOrNo(d.sensor().isUnlockEnabled); },
     "YES", "NO"},
    {"FingerOn", "<true/>", [](Device& d) { return yesOrNo(d.sensor().isFingerOn); }, "NO", "YES"},
    {"LegacyAlerts", "<true/>", [](Device& d) { return yesOrNo(d.system().canUseAlertView); }, "NO",
     "YES"},
    {"DarkMode", "<true/>",
     [](Device& d) {
       return yesOrNo(d.screen().userInterfaceStyle() == UIUserInterfaceStyle::dark);
     },
     "NO", "YES"},
    {"Tablet", "<true/>",
     [](Device& d) {
       return yesOrNo(d.screen().userInterfaceIdiom() == UIUserInterfaceIdiom::pad);
     },
     "NO", "YES"},
};

TEST_F(PhoneFromItsRoot, ChangesOfTheHardwareOnlyWhatIsSaidOfIt) {
  for (const HardwareKey& said : hardwareKeys) {
    SimulatedDevice described;
    replace("var/run/sentrel/device.plist", std::string("<plist><dict><key>") + said.key +
                                                "</key>" + said.value + "</dict></plist>");
    reader().fill(described);
    for (const HardwareKey& key : hardwareKeys)
      EXPECT_EQ(key.read(described), std::string_view(key.key) == said.key ? said.said : key.unsaid)
          << key.key << " where " << said.key << " is said";
  }
}

TEST_F(PhoneFromItsRoot, HasDarkModeAndScenesFromSystem13On) {
  const struct {
    const char* version;
    bool hasBoth;
  } cases[] = {{"12.4.1", false}, {"13.0", true}, {"14.2", true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.version);
    replace("System/Library/CoreServices/SystemVersion.plist",
            std::string("<plist><dict><key>ProductVersion</key><string>") + c.version +
                "</string></dict></plist>");
    replace("var/run/sentrel/device.plist",
            "<plist><dict><key>DarkMode</key><true/><key>ConnectedScenes</key><integer>2</integer>"
            "</dict></plist>");
    SimulatedDevice described;
    reader().fill(described);
    const auto home = described.launch(std::string(springBoardBundleIdentifier));
    EXPECT_EQ(home->run([] { return SNUtils::isDarkModeEnabled(); }), c.hasBoth);
    const auto& scenes = home->process().platform().springBoard->connectedScenes;
    EXPECT_EQ(scenes ? scenes() : 0, c.hasBoth ? 2U : 0U);
  }
}

TEST_F(PhoneFromItsRoot, LeavesOutWhatIsDamagedAndSaysSo) {
  replace("Applications/Broken.app/Info.plist", "not a property list");
  replace("Applications/Nameless.app/Info.plist", "<plist><dict/></plist>");
  fs::create_directories(root / "Applications/Empty.app");
  replace("var/mobile/Library/SpringBoard/IconState.plist",
          "<plist><dict><key>iconLists</key><array><array><integer>1</integer>"
          "<string>com.example.maps</string></array></array></dict></plist>");
  replace("System/Library/CoreServices/SystemVersion.plist", "<plist><array/></plist>");
  auto damaged = reader();
  damaged.fill(device);
  EXPECT_EQ(device.system().version, SystemState().version);
  EXPECT_TRUE(device.applications().find("com.example.notes"));
  EXPECT_TRUE(device.homeScreen().icon("com.example.maps"));
  EXPECT_TRUE(device.homeScreen().folders().empty());
  for (const char* part : {"Broken.app", "Nameless.app", "Empty.app", "IconState", "SystemVersion"})
    EXPECT_TRUE(std::ranges::any_of(damaged.complaints(), [part](const std::string& complaint) {
      return complaint.find(part) != std::string::npos;
    })) << part;
}

TEST_F(PhoneFromItsRoot, MayBeEmptyOrMissing) {
  DeviceRootReader nowhere{storage::DeviceRoot((root / "nowhere").string())};
  nowhere.fill(device);
  EXPECT_TRUE(nowhere.complaints().empty());
  EXPECT_FALSE(device.applications().find("com.example.notes"));
}

}  // namespace
}  // namespace sentrel::simulated
