#include "programs/common/HomeScreenItems.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "device/simulated/DeviceRootReader.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::programs {
namespace {

namespace fs = std::filesystem;

/// A copy of the example root, whose Chess has an icon of its own and whose "Spare" has no place.
class HomeScreenOfARoot : public testing::Test {
 protected:
  HomeScreenOfARoot() {
    const fs::path examples = fs::path(SENTREL_SOURCE) / "examples" / "root";
    fs::copy(examples, root_, fs::copy_options::recursive);
    const fs::path chess = root_ / "var/containers/Bundle/Application/00000004/Chess.app";
    put(chess / "Info.plist",
        "<key>CFBundleIdentifier</key><string>com.example.chess</string>"
        "<key>CFBundleIcons</key><dict><key>CFBundlePrimaryIcon</key><dict>"
        "<key>CFBundleIconFiles</key><array><string>small</string><string>large</string></array>"
        "</dict></dict>");
    for (const char* picture : {"small.png", "large.png", "large@2x.png"})
      std::ofstream(chess / picture) << picture;
    put(root_ / "Applications/Spare.app/Info.plist",
        "<key>CFBundleIdentifier</key><string>spare</string>");
  }

  void put(const fs::path& file, const std::string& entries) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << "<plist><dict>" << entries << "</dict></plist>";
  }

  /// Names, and of folders how many icons they show.
  static std::string describe(const std::vector<HomeScreenItem>& items) {
    std::string text;
    for (const HomeScreenItem& item : items)
      text += item.name + (item.isFolder ? std::to_string(item.images.size()) : "") + " ";
    return text;
  }

  HomeScreenItems items() {
    simulated::SimulatedDevice device;
    simulated::DeviceRootReader(storage::DeviceRoot(root_.string())).fill(device);
    return itemsOf(device, [this](const std::string& path) {
      read_.push_back(fs::path(path).filename().string());
      return own_;
    });
  }

  const TemporaryFolder folder_;
  const fs::path root_ = folder_.path();
  const std::shared_ptr<const UIImage> own_ = std::make_shared<UIImage>();
  std::vector<std::string> read_;
};

TEST_F(HomeScreenOfARoot, ShowsItsApplicationsWhereTheyAreByTheirNamesInItsLanguage) {
  const HomeScreenItems german = items();
  EXPECT_EQ(describe(german.page), "Fotos Einstellungen Notizen Spiele2 Geld1 Karten spare ");
  EXPECT_EQ(describe(german.dock), "Post ");
  put(root_ / "var/mobile/Library/Preferences/.GlobalPreferences.plist",
      "<key>AppleLanguages</key><array><string>en</string></array>");
  EXPECT_EQ(describe(items().page), "Photos Preferences Notes Spiele2 Geld1 Maps spare ");
}

TEST_F(HomeScreenOfARoot, ShowsAnApplicationsFinestPictureOrOneOfOurs) {
  const HomeScreenItems shown = items();
  EXPECT_EQ(read_, std::vector<std::string>{"large@2x.png"});
  EXPECT_EQ(shown.page.at(3).images.at(0), own_);
  EXPECT_FALSE(shown.page.at(0).images.at(0)->rgba.empty());
}

}  // namespace
}  // namespace sentrel::programs
