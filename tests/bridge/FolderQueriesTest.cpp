#include <gmock/gmock.h>

#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;
using testing::ElementsAre;
using testing::IsEmpty;

Dictionary icon(const char* name, const char* identifier) {
  return {{"SentrelFolderDisplayName", name}, {"SentrelBundleIdentifier", identifier}};
}

Dictionary folder(const char* name, Array icons) {
  return {{"SentrelFolderDisplayName", name}, {"SentrelAllIcons", std::move(icons)}};
}

class FolderQueries : public BridgeTest {
 protected:
  FolderQueries() {
    device.applications().install({"com.example.mail", "Mail"});
    device.applications().install({"com.example.chess", "Chess"});
    device.applications().install({"com.example.go", "Go"});
    device.homeScreen().addApplication("com.example.mail");
    games = device.homeScreen().addFolder("Games", {"com.example.chess", "com.example.go"});
  }

  /// Lets the application see the icons itself, so that what it logs can be read.
  void showIconsToApp() { away().iconController = home().iconController; }

  static bool hasFolder(const char* identifier) { return SNUtils::hasAnyParentFolder(identifier); }
  static std::optional<Dictionary> data(const char* identifier) {
    return SNUtils::protectedFolderData(identifier);
  }

  std::shared_ptr<simulated::SimulatedFolder> games;
};

TEST_F(FolderQueries, AnApplicationOnTheHomeScreenItselfHasNoFolder) {
  for (const bool isApp : {false, true}) {
    const auto check = [] {
      EXPECT_FALSE(hasFolder("com.example.mail"));
      EXPECT_TRUE(hasFolder("com.example.chess"));
      EXPECT_TRUE(hasFolder("com.example.unknown")) << "nobody can tell";
      EXPECT_FALSE(hasFolder(""));
    };
    isApp ? inApp(check) : check();
  }
  const std::string name = "com.quorvin.sentrel.app.has.parent.folder";
  EXPECT_THAT(takeRequests(), ElementsAre(name, name, name));
}

TEST_F(FolderQueries, EveryAnswerAboutAFolderIsLogged) {
  showIconsToApp();
  enableLogging();
  const auto found = inApp([] { return data("com.example.go"); });
  inApp([] { data("com.example.mail"); });
  ASSERT_TRUE(found);
  EXPECT_THAT(takeAppLog(),
              ElementsAre("isFolderProtected (com.example.go) -> iconsData: " + describe(*found)));
  const auto mail = device.homeScreen().icon("com.example.mail");
  inApp([&] {
    hasFolder("com.example.mail");
    hasFolder("com.example.chess");
    EXPECT_TRUE(hasFolder("com.example.unknown"));
    mail->parent = [] { return nullptr; };
    EXPECT_TRUE(hasFolder("com.example.mail"));
    mail->parent = nullptr;
    EXPECT_TRUE(hasFolder("com.example.mail"));
    away().iconController->expectedIconForDisplayIdentifier = nullptr;
    EXPECT_TRUE(hasFolder("com.example.chess"));
  });
  const std::string noParent = "'SBIcon' does not responds to selector 'parent'";
  EXPECT_THAT(
      takeAppLog(),
      ElementsAre("App 'com.example.mail' does not have any folder: <SBRootFolderWithDock: (null)>",
                  "App 'com.example.chess' has a parent folder: <SBFolder: Games>", noParent,
                  "App 'com.example.mail' has a parent folder: (null)", noParent, noParent));
}

TEST_F(FolderQueries, DataHoldTheIconAndTheRecordOfItsFolder) {
  Dictionary expected = icon("Go", "com.example.go");
  expected.emplace("SentrelAllIcons", folder("Games", {icon("Chess", "com.example.chess"),
                                                       icon("Go", "com.example.go")}));
  EXPECT_EQ(data("com.example.go"), expected);
  EXPECT_EQ(data("com.example.mail"), std::nullopt) << "in no folder";
  EXPECT_THAT(takeRequests(), IsEmpty());
  inApp([&] {
    EXPECT_EQ(data("com.example.go"), expected);
    EXPECT_EQ(data("com.example.mail"), std::nullopt);
    EXPECT_EQ(data(""), std::nullopt);
  });
  EXPECT_EQ(takeRequests().size(), 2u);
}

TEST_F(FolderQueries, TheFirstIconOfThatIdentifierDecides) {
  device.homeScreen().addFolder("More games", {"com.example.go"});
  EXPECT_EQ(data("com.example.go")
                ->at("SentrelAllIcons")
                .as<Dictionary>()
                ->at("SentrelFolderDisplayName"),
            PropertyList("Games"));
  games->icons()[1]->displayName = nullptr;
  games->icons()[1]->application = nullptr;
  EXPECT_EQ(data("com.example.go"), std::nullopt) << "an icon without a name ends the search";
}

TEST_F(FolderQueries, OnlyTheHomeScreensOwnRootFolderIsWalked) {
  device.homeScreen().root().setClassName("SBRootFolder");
  EXPECT_EQ(data("com.example.go"), std::nullopt);
  EXPECT_TRUE(hasFolder("com.example.mail")) << "a parent folder of any other class is a folder";
}

TEST_F(FolderQueries, AModelThatLacksAnOperationHasNoData) {
  games->allIcons = nullptr;
  EXPECT_EQ(data("com.example.go"), std::nullopt);
  device.homeScreen().root().folderIcons = nullptr;
  EXPECT_EQ(data("com.example.go"), std::nullopt);
  home().iconController->rootFolder = [] { return nullptr; };
  EXPECT_EQ(data("com.example.go"), std::nullopt);
  home().iconController->rootFolder = nullptr;
  EXPECT_EQ(data("com.example.go"), std::nullopt);
}

TEST_F(FolderQueries, AFolderRecordLeavesNamelessIconsOutAndWritesEmptyTexts) {
  simulated::SimulatedFolder odd("SBFolder", std::nullopt);
  odd.add(simulated::makeIcon("com.example.x", ""));
  odd.add(simulated::makeIcon(std::nullopt, "Bookmark"));
  EXPECT_EQ(SNUtils::folderRecord(odd), folder("", {icon("Bookmark", "")}));
}

}  // namespace
}  // namespace sentrel
