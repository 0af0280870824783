#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using ::testing::ElementsAre;
using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

PropertyList icon(const std::string& name) {
  return Dictionary{{"SentrelFolderDisplayName", name},
                    {"SentrelBundleIdentifier", "com.example." + name}};
}

PropertyList folder(const char* name, Array icons) {
  return Dictionary{{"SentrelFolderDisplayName", name}, {"SentrelAllIcons", std::move(icons)}};
}

class Folders : public TwoProcesses {
 protected:
  void useFolders(Array records, Dictionary more = {}) {
    more.emplace("SentrelEnabled", true);
    more.emplace("SentrelFolders", std::move(records));
    useSettings(std::move(more));
  }

  PropertyList storedFolders() {
    return settings().valueForKey("SentrelFolders").value_or(PropertyList(false));
  }

  /// Whether memory and file hold just these records.
  ::testing::AssertionResult holds(const Array& records) {
    if (settings().enabledFolders() != records)
      return ::testing::AssertionFailure() << "in memory " << describe(settings().enabledFolders());
    if (storedFolders() != PropertyList(records))
      return ::testing::AssertionFailure() << "in the file " << describe(storedFolders());
    return ::testing::AssertionSuccess();
  }

  std::size_t changesPosted() { return posted(notifications::settingsChanged); }

  /// A live folder with an application installed for each name.
  std::shared_ptr<simulated::SimulatedFolder> showFolder(std::optional<std::string> name,
                                                         const std::vector<std::string>& names) {
    const auto live = device.homeScreen().addFolder(std::move(name), {});
    for (const std::string& shown : names)
      live->add(simulated::makeIcon("com.example." + shown, shown));
    return live;
  }

  const Array work{folder("Work", {icon("mail"), icon("notes")})};
};

struct Match {
  const char* description;
  Array stored;
  PropertyList query;
  std::int64_t index;
};

TEST_F(Folders, MatchByNameAndByEveryStoredIcon) {
  const PropertyList withoutName = Dictionary{{"SentrelAllIcons", Array{icon("a")}}};
  const PropertyList withoutIcons = Dictionary{{"SentrelFolderDisplayName", "F"}};
  const PropertyList nameless = Dictionary{{"SentrelBundleIdentifier", "com.example.a"}};
  const PropertyList anonymous = Dictionary{{"SentrelFolderDisplayName", "a"}};
  const PropertyList renamed =
      Dictionary{{"SentrelFolderDisplayName", "b"}, {"SentrelBundleIdentifier", "com.example.a"}};
  const PropertyList a = icon("a"), b = icon("b"), c = icon("c");
  const Match matches[] = {
      {"nothing stored", {}, folder("F", {a}), -1},
      {"the same", {folder("F", {a, b})}, folder("F", {a, b}), 0},
      {"in another order", {folder("F", {a, b})}, folder("F", {b, a}), 0},
      {"icons were added", {folder("F", {a})}, folder("F", {b, a, c}), 0},
      {"an icon has gone", {folder("F", {a, b})}, folder("F", {a, c}), -1},
      {"more stored than there are", {folder("F", {a, a})}, folder("F", {a}), 0},
      {"another name", {folder("F", {a})}, folder("f", {a}), -1},
      {"the first of several",
       {folder("G", {a}), folder("F", {b}), folder("F", {a}), folder("F", {a, b})},
       folder("F", {a, b}),
       1},
      {"stored without icons", {folder("F", {})}, folder("F", {a}), 0},
      {"both without icons", {folder("", {})}, folder("", {}), 0},
      {"icon of another name", {folder("F", {a})}, folder("F", {renamed}), -1},
      {"name and identifier of two icons", {folder("F", {renamed})}, folder("F", {a, b}), -1},
      {"stored icon without a name", {folder("F", {nameless})}, folder("F", {nameless}), -1},
      {"stored icon without identifier", {folder("F", {anonymous})}, folder("F", {anonymous}), -1},
      {"stored without a name", {withoutName}, withoutName, -1},
      {"stored without a list of icons", {withoutIcons}, folder("F", {a}), -1},
      {"query without a list of icons", {folder("F", {})}, withoutIcons, 0},
      {"things that are no records",
       {1, "F", Array{a}, folder("F", {"a"}), folder("F", {a})},
       folder("F", {a}),
       4},
      {"query that is no record", {folder("F", {})}, "F", -1}};
  for (const Match& match : matches) {
    SCOPED_TRACE(match.description);
    useFolders(match.stored);
    EXPECT_EQ(settings().matchedFolderDataIndex(match.query), match.index);
    EXPECT_EQ(settings().hasFolder(match.query), match.index >= 0);
  }
}

TEST_F(Folders, AddingReplacesTheMatchOrAppendsAndResettingLeavesNone) {
  useFolders(work);
  const PropertyList grown = folder("Work", {icon("mail"), icon("notes"), icon("maps")});
  EXPECT_TRUE(settings().addToFolders(grown));
  EXPECT_TRUE(holds({grown}));
  const PropertyList shrunk = folder("Work", {icon("mail")});
  EXPECT_TRUE(settings().addToFolders(shrunk));
  EXPECT_TRUE(holds({grown, shrunk}));
  EXPECT_TRUE(settings().updateFoldersData(grown, shrunk));
  EXPECT_TRUE(holds({shrunk, shrunk})) << "replacing may leave duplicates";
  EXPECT_TRUE(settings().resetAllFolders());
  EXPECT_TRUE(holds({}));
  EXPECT_EQ(changesPosted(), 4U);
}

TEST_F(Folders, RemovingAnUnknownFolderIsOutOfRangeAndChangesNothing) {
  const PropertyList other = folder("Play", {icon("game")});
  useFolders({work[0], other});
  EXPECT_TRUE(settings().removeFromFolders(work[0]));
  EXPECT_TRUE(holds({other}));
  EXPECT_EQ(changesPosted(), 1U);
  EXPECT_THROW(settings().removeFromFolders(work[0]), std::out_of_range);
  EXPECT_TRUE(holds({other}));
  EXPECT_EQ(changesPosted(), 1U);
}

TEST_F(Folders, ChangingAnIconTouchesTheMatchedRecordAlone) {
  const PropertyList extended = Dictionary{{"SentrelFolderDisplayName", "Work"},
                                           {"SentrelAllIcons", Array{icon("mail"), icon("mail")}},
                                           {"Other", 5}};
  const PropertyList other = folder("Play", {icon("mail")});
  const auto changedTo = [&](Array icons) {
    Dictionary record = *extended.as<Dictionary>();
    record.insert_or_assign("SentrelAllIcons", std::move(icons));
    return Array{other, record};
  };
  struct Change {
    const char* description;
    bool add;
    std::optional<PropertyList> newData;
    Array icons;
  };
  const Change changes[] = {
      {"adds", true, icon("maps"), {icon("mail"), icon("mail"), icon("maps")}},
      {"adds what is there", true, icon("mail"), {icon("mail"), icon("mail"), icon("mail")}},
      {"removes every equal one", false, icon("mail"), {}},
      {"removes what is not there", false, icon("maps"), {icon("mail"), icon("mail")}},
      {"adds nothing", true, std::nullopt, {icon("mail"), icon("mail")}},
      {"removes nothing", false, std::nullopt, {icon("mail"), icon("mail")}}};
  for (const Change& change : changes) {
    SCOPED_TRACE(change.description);
    useFolders({other, extended});
    const std::size_t before = changesPosted();
    EXPECT_TRUE(settings().updateFoldersData(extended, change.add, change.newData));
    EXPECT_TRUE(holds(changedTo(change.icons)));
    EXPECT_EQ(changesPosted(), before + 1);
  }
}

TEST_F(Folders, UnmatchedChangesWriteAndPostNothing) {
  useFolders(work);
  const int writes = device.files().writeCount();
  const PropertyList unknown = folder("Play", {icon("game")});
  EXPECT_FALSE(settings().updateFoldersData(unknown, /*add=*/true, icon("maps")));
  EXPECT_FALSE(settings().updateFoldersData(unknown, unknown));
  EXPECT_EQ(device.files().writeCount(), writes);
  EXPECT_EQ(changesPosted(), 0U);
  EXPECT_TRUE(holds(work));
}

TEST_F(Folders, EveryWriterLogsItsSteps) {
  useFolders({}, {{"SentrelEnableLogging", true}});
  inApp([] {
    SNSettings& own = SNSettings::sharedSettings();
    const PropertyList f =
        Dictionary{{"SentrelFolderDisplayName", "F"}, {"SentrelAllIcons", Array()}};
    own.addToFolders(f);
    own.addToFolders(f);
    own.updateFoldersData(f, /*add=*/true, PropertyList("i"));
    own.updateFoldersData(f, f);
    own.resetAllFolders();
    own.addToFolders(f);
    own.removeFromFolders(f);
  });
  const std::string f = "{SentrelAllIcons = (); SentrelFolderDisplayName = \"F\"}";
  const std::string all = "(" + f + ")";
  const std::string updated = "({SentrelAllIcons = (\"i\"); SentrelFolderDisplayName = \"F\"})";
  std::vector<std::string> expected;
  for (const std::string& line : std::vector<std::string>{
           "Adding folders info to settings: " + f, "Got counter as: -1",
           "After adding self.enabledFolders: " + all, "Adding folders info to settings: " + f,
           "Got counter as: 0", "After adding self.enabledFolders: " + all,
           "Got folder data as: " + f, "allFoldersArray: ()", "After updating: " + updated,
           "Resetting all folders....", "Adding folders info to settings: " + f,
           "Got counter as: -1", "After adding self.enabledFolders: " + all,
           "Removing folders info to settings: " + f})
    expected.push_back(std::string(appIdentifier).append(" < - > ").append(line));
  EXPECT_EQ(logLines, expected);
}

class LiveFolders : public Folders {
 protected:
  void unlock(SessionKey key) {
    springBoard->process().controller().updateLastAuthenticationTime(std::move(key));
  }

  static Dictionary sessions() {
    return {{"SentrelRemember", true}, {"SentrelRememberUntilDeviceLocked", true}};
  }
};

TEST_F(LiveFolders, AreKnownByTheirContent) {
  useFolders({work[0], folder("", {icon("game")})});
  EXPECT_TRUE(settings().isFolderProtected(*showFolder("Work", {"notes", "maps", "mail"})));
  EXPECT_FALSE(settings().isFolderProtected(*showFolder("Work", {"notes"})));
  EXPECT_TRUE(settings().isFolderProtected(*showFolder(std::nullopt, {"game"})));
}

TEST_F(LiveFolders, AreAllProtectedWithoutALookAtTheListAndIgnoringAllOther) {
  useFolders({}, {{"SentrelAllFoldersProtected", true}});
  const auto live = showFolder("Play", {"game"});
  EXPECT_TRUE(settings().isFolderProtected(*live));
  settings().setSentrelEnabled(false);
  EXPECT_FALSE(settings().isFolderProtected(*live));
  EXPECT_TRUE(settings().isFolderProtected(*live, /*ignoreAllOther=*/true));
  // A stored one runs into the gate again for its record.
  useFolders({folder("Play", {icon("game")})}, {{"SentrelAllFoldersProtected", false}});
  EXPECT_TRUE(settings().isFolderProtected(*live, /*ignoreAllOther=*/true));
  settings().setSentrelEnabled(false);
  EXPECT_FALSE(settings().isFolderProtected(*live, /*ignoreAllOther=*/true));
}

TEST_F(LiveFolders, SessionsCoverTheObjectButNoRecordMadeLater) {
  useFolders(work, sessions());
  const auto live = showFolder("Work", {"mail", "notes"});
  const auto twin = showFolder("Work", {"mail", "notes"});
  unlock(SessionKey::record(SNUtils::folderRecord(*live)));
  EXPECT_TRUE(settings().isFolderProtected(*live));
  unlock(SessionKey::object(live));
  EXPECT_FALSE(settings().isFolderProtected(*live));
  EXPECT_TRUE(settings().isFolderProtected(*twin));
  EXPECT_TRUE(settings().isFolderProtected(*live, /*ignoreAllOther=*/true));
}

TEST_F(LiveFolders, SessionForAllCoversTheRecordAlsoWhenAllOtherIsIgnored) {
  Dictionary more = sessions();
  more.emplace("SentrelApplyUnlockSession", true);
  useFolders(work, more);
  const auto live = showFolder("Work", {"mail", "notes"});
  unlock("anything");
  EXPECT_FALSE(settings().isFolderProtected(*live, /*ignoreAllOther=*/true));
}

/// An application that lies in the folder "Work" with "notes", unless said otherwise.
class FolderedApp : public LiveFolders {
 protected:
  static constexpr std::string_view mail = "com.example.mail";

  FolderedApp() { showFolder("Work", {"mail", "notes"}); }

  PropertyList parentData() {
    return PropertyList(SNUtils::protectedFolderData(std::string(mail)).value());
  }

  std::optional<PropertyList> protectingFolder(bool ignoreAllOther = false) {
    return settings().isFolderProtectedForApp(mail, ignoreAllOther);
  }
};

TEST_F(FolderedApp, IsProtectedByTheLastRecordThatHoldsIt) {
  const PropertyList reordered = folder("Work", {icon("notes"), icon("mail"), icon("mail")});
  const PropertyList subset = folder("Work", {icon("mail")});
  const PropertyList superset = folder("Work", {icon("mail"), icon("notes"), icon("maps")});
  const PropertyList elsewhere = folder("Play", {icon("mail"), icon("notes")});
  const PropertyList damaged = folder("Work", {icon("mail"), icon("notes"), Dictionary()});
  const PropertyList other = folder("Other", {icon("game")});
  struct Case {
    const char* description;
    Array stored;
    bool allFolders;
    std::optional<PropertyList> expected;
  };
  const Case cases[] = {{"the folder as it is", work, false, work[0]},
                        {"order and duplicates do not count", {reordered}, false, reordered},
                        {"stands after others", {other, work[0]}, false, work[0]},
                        {"stands before others", {work[0], other}, false, work[0]},
                        {"the last decides: other icons", {work[0], subset}, false, std::nullopt},
                        {"the last decides: same icons", {subset, work[0]}, false, work[0]},
                        {"fewer icons, all protected", {subset}, true, std::nullopt},
                        {"more icons, all protected", {superset}, true, std::nullopt},
                        {"an icon without identifier", {damaged}, true, std::nullopt},
                        {"another name", {elsewhere}, false, std::nullopt},
                        {"another name, all protected", {work[0], elsewhere}, true, parentData()},
                        {"not stored", {other}, false, std::nullopt},
                        {"not stored, all protected", {other}, true, parentData()},
                        {"nothing stored, all protected", {}, true, parentData()},
                        {"no records, all protected",
                         {5, "x", Dictionary{{"SentrelAllIcons", mail}}},
                         true,
                         parentData()}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.description);
    useFolders(c.stored, {{"SentrelAllFoldersProtected", c.allFolders}});
    EXPECT_EQ(protectingFolder(), c.expected);
    inApp(
        [&] { EXPECT_EQ(SNSettings::sharedSettings().isFolderProtectedForApp(mail), c.expected); });
  }
}

TEST_F(FolderedApp, IsProtectedAsTheFoldersAreAfterEachChange) {
  useFolders({}, {});
  const PropertyList both = work[0];
  const PropertyList mailAlone = folder("Work", {icon("mail")});
  EXPECT_EQ(protectingFolder(), std::nullopt);
  settings().addToFolders(mailAlone);
  EXPECT_EQ(protectingFolder(), std::nullopt);
  settings().updateFoldersData(mailAlone, /*add=*/true, icon("notes"));
  EXPECT_EQ(protectingFolder(), both);
  settings().updateFoldersData(both, mailAlone);
  EXPECT_EQ(protectingFolder(), std::nullopt);
  settings().setEnabledFolders({both});
  EXPECT_EQ(protectingFolder(), both);
  settings().removeFromFolders(both);
  EXPECT_EQ(protectingFolder(), std::nullopt);
  settings().addToFolders(both);
  EXPECT_EQ(protectingFolder(), both);
  settings().resetAllFolders();
  EXPECT_EQ(protectingFolder(), std::nullopt);
}

TEST_F(FolderedApp, PassesTheGateUnlessAllOtherIsIgnored) {
  useFolders(work, sessions());
  settings().setSentrelEnabled(false);
  EXPECT_EQ(protectingFolder(), std::nullopt);
  EXPECT_EQ(protectingFolder(/*ignoreAllOther=*/true), work[0]);
  settings().setSentrelEnabled(true);
  unlock(mail);
  EXPECT_EQ(protectingFolder(), std::nullopt);
  EXPECT_EQ(protectingFolder(/*ignoreAllOther=*/true), work[0]);
}

TEST_F(FolderedApp, NeedsNoAuthenticationOnATrustedNetworkAndNeitherDoesItsFolder) {
  const auto live = showFolder("Work", {"mail", "notes"});
  for (const bool allFolders : {false, true}) {
    device.wifi().joined.reset();
    useFolders(work, {{"SentrelTrustedNetworks", Array{"home"}},
                      {"SentrelAllFoldersProtected", allFolders}});
    EXPECT_TRUE(settings().hasFolder(work[0]));
    EXPECT_TRUE(settings().isFolderProtected(*live));
    EXPECT_EQ(protectingFolder(), work[0]);
    device.wifi().joined = "home";
    EXPECT_FALSE(settings().hasFolder(work[0]));
    EXPECT_FALSE(settings().isFolderProtected(*live));
    EXPECT_EQ(protectingFolder(), std::nullopt);
    EXPECT_TRUE(settings().hasFolder(work[0], /*ignoreAllOther=*/true));
    EXPECT_EQ(protectingFolder(/*ignoreAllOther=*/true), work[0]);
  }
}

TEST_F(FolderedApp, OutsideEveryFolderIsProtectedByNone) {
  useFolders({folder("Work", {icon("loose")})}, {{"SentrelAllFoldersProtected", true}});
  device.homeScreen().root().add(simulated::makeIcon("com.example.loose", "loose"));
  EXPECT_EQ(settings().isFolderProtectedForApp("com.example.loose"), std::nullopt);
  EXPECT_EQ(settings().isFolderProtectedForApp("com.example.unknown"), std::nullopt);
  EXPECT_EQ(settings().isFolderProtectedForApp(std::nullopt, /*ignoreAllOther=*/true),
            std::nullopt);
}

TEST_F(FolderedApp, WithoutAnAnswerFromTheHomeScreenIsProtectedByNone) {
  useFolders(work, {{"SentrelAllFoldersProtected", true}});
  device.messages().setResponder(
      std::string(messageChannelName), springBoard->weakProcess(),
      [](const std::string& name, const UserInfo&) -> UserInfo {
        if (name != "com.quorvin.sentrel.app.has.parent.folder") return std::nullopt;
        return PropertyList::Dictionary{{std::string(messageDataKey), true}};
      });
  inApp(
      [] { EXPECT_EQ(SNSettings::sharedSettings().isFolderProtectedForApp(mail), std::nullopt); });
}

}  // namespace
}  // namespace sentrel
