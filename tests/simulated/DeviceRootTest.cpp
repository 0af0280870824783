#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "device/simulated/DeviceRootReader.h"
#include "sentrel/bridge/SNUtils.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::simulated {
namespace {

namespace fs = std::filesystem;

/// A copy of the example root, to be read and to be damaged.
class PhoneFromItsRoot : public ::testing::Test {
 protected:
  PhoneFromItsRoot() {
    fs::copy(fs::path(SENTREL_SOURCE) / "examples" / "root", root, fs::copy_options::recursive);
  }

  DeviceRootReader reader() { return DeviceRootReader(storage::DeviceRoot(root.string())); }

  void replace(const std::string& path, const std::string& content) {
    fs::create_directories((root / path).parent_path());
    std::ofstream(root / path) << content;
  }

  /// One entry in the place of a file's others.
  void replace(const std::string& path, const std::string& key, const std::string& value) {
    replace(path, "<plist><dict><key>" + key + "</key>" + value + "</dict></plist>");
  }

  const TemporaryFolder folder;
  const fs::path root = folder.path();
  SimulatedDevice device;
};

using Complaints = std::vector<std::string>;

/// What was said about one file, without its name.
Complaints about(const std::string& path, const DeviceRootReader& reader) {
  const std::string start = "/" + path + ": ";
  Complaints faults;
  for (const std::string& complaint : reader.complaints())
    if (complaint.starts_with(start)) faults.push_back(complaint.substr(start.size()));
  return faults;
}

const std::string iconState = "var/mobile/Library/SpringBoard/IconState.plist";
const std::string preferences = "var/mobile/Library/Preferences/.GlobalPreferences.plist";
const std::string networks = "var/preferences/SystemConfiguration/com.apple.wifi.plist";
const std::string systemVersion = "System/Library/CoreServices/SystemVersion.plist";
const std::string state = "var/run/sentrel/device.plist";
const std::string notesBundle = "var/containers/Bundle/Application/00000001/Notes.app";

TEST_F(PhoneFromItsRoot, DescribesThePhone) {
  auto example = reader();
  example.fill(device);
  EXPECT_TRUE(example.complaints().empty());
  EXPECT_EQ(device.system().version, "14.2");
  EXPECT_TRUE(device.sensor().isPearlIDCapable);
  EXPECT_FALSE(device.sensor().isTouchIDCapable);
  EXPECT_EQ(device.wifi().known, (std::vector<std::string>{"Zuhause", "Café Größe 1"}));
  EXPECT_FALSE(device.wifi().joined);
  EXPECT_EQ(device.applications().find("com.example.bank")->displayName, "Bank");
  const auto& folders = device.homeScreen().folders();
  ASSERT_EQ(folders.size(), 2U);
  EXPECT_EQ(folders[0]->displayName(), "Spiele");
  EXPECT_EQ(folders[0]->icons().size(), 2U);
  EXPECT_TRUE(device.homeScreen().icon("com.example.mail"));
}

TEST_F(PhoneFromItsRoot, GivesEachBundleItsTextsInTheDevicesLanguage) {
  auto example = reader();
  EXPECT_EQ(example.mainBundle("com.example.notes")->localizedString("Cancel"), "Abbrechen");
  EXPECT_EQ(example.mainBundle("com.apple.springboard")->localizedString("Sentrel"),
            "Sentrel-Schutz");
  EXPECT_EQ(example.mainBundle("com.example.absent")->localizedString("Cancel"), "Cancel");
  replace(preferences, "AppleLanguages", "<array><string>en</string></array>");
  EXPECT_EQ(reader().mainBundle("com.example.notes")->localizedString("Cancel"), "Cancel");
}

using Device = SimulatedDevice;

struct HardwareKey {
  const char* key;
  const char* value;
  PropertyList unsaid;
  PropertyList said;
  std::function<PropertyList(Device& device)> read;
};

const HardwareKey hardwareKeys[] = {
    {"Model", "<string>iPad7,5</string>", "iPhone10,3", "iPad7,5",
     [](Device& d) { return d.system().model; }},
    {"JoinedNetwork", "<string>Zuhause</string>", "none", "Zuhause",
     [](Device& d) { return d.wifi().joined.value_or("none"); }},
    {"FrontApplication", "<string>com.example.notes</string>", "none", "com.example.notes",
     [](Device& d) { return d.applications().front().value_or("none"); }},
    {"ConnectedScenes", "<integer>2</integer>", "1", "2",
     [](Device& d) { return std::to_string(d.system().connectedScenes); }},
    {"ConnectedScenes", "<integer>-1</integer>", "1", "0",
     [](Device& d) { return std::to_string(d.system().connectedScenes); }},
    {"Assertions", "<array><string>camera</string><true/><string>wallet</string></array>",
     PropertyList::Array(), PropertyList::Array{"camera", "wallet"},
     [](Device& d) {
       const auto reasons = d.sensor().reasons();
       return PropertyList::Array(reasons.begin(), reasons.end());
     }},
    {"Locked", "<true/>", false, true, [](Device& d) { return d.lock().isLocked(); }},
    {"PasscodeSet", "<false/>", true, false, [](Device& d) { return d.lock().isPasscodeSet(); }},
    {"TouchID", "<true/>", false, true, [](Device& d) { return d.sensor().isTouchIDCapable; }},
    {"FaceID", "<false/>", true, false, [](Device& d) { return d.sensor().isPearlIDCapable; }},
    {"Enrolled", "<false/>", true, false, [](Device& d) { return d.sensor().isEnrolled; }},
    {"BiometricUnlock", "<false/>", true, false,
     [](Device& d) { return d.sensor().isUnlockEnabled; }},
    {"FingerOn", "<true/>", false, true, [](Device& d) { return d.sensor().isFingerOn; }},
    {"LegacyAlerts", "<true/>", false, true, [](Device& d) { return d.system().canUseAlertView; }},
    {"DarkMode", "<true/>", false, true,
     [](Device& d) { return d.screen().userInterfaceStyle() == UIUserInterfaceStyle::dark; }},
    {"Tablet", "<true/>", false, true,
     [](Device& d) { return d.screen().userInterfaceIdiom() == UIUserInterfaceIdiom::pad; }}};

TEST_F(PhoneFromItsRoot, ChangesOfTheHardwareOnlyWhatIsSaidOfIt) {
  for (const HardwareKey& said : hardwareKeys) {
    SimulatedDevice described;
    replace(state, said.key, said.value);
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
    replace(systemVersion, "ProductVersion", "<string>" + std::string(c.version) + "</string>");
    replace(state,
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

TEST_F(PhoneFromItsRoot, FallsBackToTheLanguageWithoutTheRegion) {
  replace(notesBundle + "/de-AT.lproj/Localizable.strings", "Cancel", "<string>Abbruch</string>");
  const struct {
    const char* language;
    const char* cancel;
    const char* name;
  } cases[] = {{"de", "Abbrechen", "Notizen"}, {"de-DE", "Abbrechen", "Notizen"},
               {"de-AT", "Abbruch", "Notes"},  {"de-Latn-CH", "Abbrechen", "Notizen"},
               {"fr-FR", "Cancel", "Notes"},   {"den-DE", "Cancel", "Notes"},
               {"-", "Cancel", "Notes"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.language);
    replace(preferences, "AppleLanguages",
            "<array><string>" + std::string(c.language) + "</string></array>");
    SimulatedDevice phone;
    auto localized = reader();
    localized.fill(phone);
    EXPECT_EQ(localized.mainBundle("com.example.notes")->localizedString("Cancel"), c.cancel);
    EXPECT_EQ(phone.applications().find("com.example.notes")->displayName, c.name);
    EXPECT_EQ(localized.complaints(), Complaints());
  }
}

TEST_F(PhoneFromItsRoot, NamesTheFaultOfEachBundleOnce) {
  const struct {
    const char* path;
    const char* content;
    const char* fault;
  } cases[] = {
      {"Applications/Broken.app/Info.plist", "not a property list", "it is damaged"},
      {"Applications/List.app/Info.plist", "<plist><array/></plist>",
       "its outermost value is not a dictionary"},
      {"Applications/Nameless.app/Info.plist", "<plist><dict/></plist>", "it names no identifier"},
      {"Applications/Tagged.app/Info.plist",
       "<plist><dict><key>CFBundleIdentifier</key><string>com.example.tagged</string>"
       "<key>SBAppTags</key><string>hidden</string></dict></plist>",
       "SBAppTags is no list"},
      {"Applications/Empty.app/Info.plist", nullptr, "there is no such file"}};
  for (const auto& c : cases) {
    fs::create_directories((root / c.path).parent_path());
    if (c.content) replace(c.path, c.content);
  }
  auto damaged = reader();
  damaged.fill(device);
  damaged.mainBundle("com.example.notes");
  for (const auto& c : cases) {
    const Complaints faults = about(c.path, damaged);
    ASSERT_EQ(faults.size(), 1U) << c.path;
    EXPECT_TRUE(faults[0].starts_with(c.fault)) << faults[0];
  }
  EXPECT_EQ(damaged.complaints().size(), std::size(cases));
  EXPECT_TRUE(device.applications().find("com.example.notes"));
}

TEST_F(PhoneFromItsRoot, KeepsTheFirstBundleOfAnIdentifier) {
  const struct {
    std::string folder;
    const char* identifier;
    const char* owner;
  } cases[] = {{"var/containers/Bundle/Application/00000009/Other.app", "com.example.notes",
                "/var/containers/Bundle/Application/00000001/Notes.app"},
               {"Applications/Zoo.app", "com.apple.mobileslideshow", "/Applications/Photos.app"},
               {"Applications/Home.app", "com.apple.springboard",
                "/System/Library/CoreServices/SpringBoard.app"}};
  for (const auto& c : cases) {
    replace(c.folder + "/Info.plist", "CFBundleIdentifier",
            "<string>" + std::string(c.identifier) + "</string>");
    replace(c.folder + "/de.lproj/Localizable.strings", "Cancel", "<string>Weg</string>");
  }
  auto doubled = reader();
  doubled.fill(device);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.identifier);
    EXPECT_EQ(doubled.mainBundle(c.identifier)->localizedString("Cancel"), "Abbrechen");
    EXPECT_EQ(about(c.folder + "/Info.plist", doubled),
              Complaints{std::string(c.identifier) + " is " + c.owner + " already"});
  }
  EXPECT_EQ(doubled.complaints().size(), std::size(cases));
  EXPECT_FALSE(device.applications().find("com.apple.springboard"));
}

TEST_F(PhoneFromItsRoot, SaysWhatIsOfAWrongShape) {
  const struct {
    std::string path;
    const char* key;
    const char* value;
    Complaints faults;
  } cases[] = {
      {iconState, "buttonBar", "<string>com.example.mail</string>", {"buttonBar is no list"}},
      {iconState, "iconLists", "<dict/>", {"iconLists is no list"}},
      {iconState,
       "iconLists",
       "<array><string>stray\nline</string><array><integer>1</integer><dict/></array></array>",
       {"stray?line in iconLists is no page", "1 is neither an application nor a folder",
        "{} is neither an application nor a folder"}},
      {networks, "List of known networks", "<dict/>", {"List of known networks is no list"}},
      {networks,
       "List of known networks",
       "<array><string>Home</string><dict><key>SSID_STR</key><true/></dict></array>",
       {"Home is no network with an SSID_STR", "{SSID_STR = YES} is no network with an SSID_STR"}},
      {systemVersion,
       "ProductVersion",
       "<string>v15</string>",
       {"ProductVersion is no text that starts with a number: v15"}},
      {systemVersion,
       "ProductVersion",
       "<integer>15</integer>",
       {"ProductVersion is no text that starts with a number: 15"}},
      {preferences, "AppleLanguages", "<string>de</string>", {"AppleLanguages is no list"}},
      {preferences,
       "AppleLanguages",
       "<array><integer>5</integer><string>de</string></array>",
       {"5 in AppleLanguages is no text"}},
      {preferences, "", "<nothing/>", {"it is damaged: an unknown element (line 1)"}},
      {state, "Assertions", "<string>call</string>", {"Assertions is no list"}},
      {state, "Model", "<integer>5</integer>", {"Model is no text: 5"}},
      {state, "PasscodeSet", "<string>maybe</string>", {"PasscodeSet is no YES or NO: maybe"}},
      {state, "ConnectedScenes", "<array/>", {"ConnectedScenes is no number: ()"}}};
  for (const auto& c : cases) {
    replace(c.path, c.key, c.value);
    SimulatedDevice phone;
    auto damaged = reader();
    damaged.fill(phone);
    damaged.mainBundle("com.example.notes");
    EXPECT_EQ(about(c.path, damaged), c.faults) << c.value;
    EXPECT_TRUE(phone.lock().isPasscodeSet()) << "as it is where nothing is said";
  }
}

TEST_F(PhoneFromItsRoot, KeepsWhatLiesBesideDamage) {
  replace(iconState, "iconLists",
          "<array><true/><array><integer>1</integer><dict>"
          "<key>displayName</key><string>Games</string>"
          "<key>iconLists</key><array><false/><array><integer>2</integer>"
          "<dict><key>iconLists</key><array><array><string>com.example.bank</string></array>"
          "</array></dict><string>com.example.chess</string></array></array>"
          "</dict><string>com.example.maps</string></array></array>");
  replace(networks, "List of known networks",
          "<array><true/><dict><key>SSID_STR</key><string>Home</string></dict></array>");
  replace(preferences, "AppleLanguages", "<array><integer>5</integer><string>de</string></array>");
  replace(systemVersion, "ProductVersion", "<string>v15</string>");
  auto damaged = reader();
  damaged.fill(device);
  EXPECT_EQ(device.system().version, SystemState().version);
  EXPECT_TRUE(device.homeScreen().icon("com.example.maps"));
  EXPECT_TRUE(device.homeScreen().icon("com.example.chess"));
  EXPECT_FALSE(device.homeScreen().icon("com.example.bank"));
  EXPECT_EQ(about(iconState + ": folder \"Games\"", damaged),
            (Complaints{"NO in iconLists is no page", "2 is no application",
                        "a folder in it is left out with its applications: "
                        "{iconLists = ((\"com.example.bank\"))}"}));
  EXPECT_EQ(device.wifi().known, std::vector<std::string>{"Home"});
  EXPECT_EQ(device.applications().find("com.example.notes")->displayName, "Notizen");
}

TEST_F(PhoneFromItsRoot, MayBeEmptyOrMissing) {
  DeviceRootReader nowhere{storage::DeviceRoot((root / "nowhere").string())};
  nowhere.fill(device);
  EXPECT_TRUE(nowhere.complaints().empty());
  EXPECT_FALSE(device.applications().find("com.example.notes"));
}

}  // namespace
}  // namespace sentrel::simulated
