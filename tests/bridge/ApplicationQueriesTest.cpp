#include <gmock/gmock.h>

#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ApplicationQueries : public BridgeTest {
 protected:
  ApplicationQueries() {
    device.applications().install({"com.example.mail", "Mail", /*isSystem=*/true});
    device.applications().install({"com.example.game", "Game", false, /*isHidden=*/true});
    device.applications().install({"com.example.anonymous", std::nullopt});
  }
};

TEST_F(ApplicationQueries, AreAnsweredAlikeInBothProcesses) {
  const struct {
    const char* identifier;
    std::optional<std::string> name;
    bool isApplication;
    bool isSystem;
    bool isHidden;
  } cases[] = {
      {"com.example.mail", "Mail", true, true, false},
      {"com.example.game", "Game", true, false, true},
      {"com.example.anonymous", std::nullopt, true, false, false},
      {"com.example.unknown", std::nullopt, false, false, false},
      {"com.example.\xC3\xA9", std::nullopt, false, false, false},
      {"\xFF\xFE", std::nullopt, false, false, false},
      {"", std::nullopt, false, false, false},
  };
  const auto check = [](const auto& known) {
    EXPECT_EQ(SNUtils::appName(known.identifier), known.name);
    EXPECT_EQ(SNUtils::isApplication(known.identifier), known.isApplication);
    EXPECT_EQ(SNUtils::isSystemApplication(known.identifier), known.isSystem);
    EXPECT_EQ(SNUtils::isHiddenApp(known.identifier), known.isHidden);
  };
  for (const auto& known : cases) {
    SCOPED_TRACE(known.identifier);
    check(known);
    EXPECT_THAT(takeRequests(), IsEmpty());
    inApp([&] { check(known); });
    EXPECT_EQ(takeRequests().size(), *known.identifier ? 4u : 0u);
  }
}

/// The name goes by the process, the classification by the class.
TEST_F(ApplicationQueries, AProcessWithTheControllerClassifiesByItself) {
  away().applicationController = simulated::makeApplicationController(device.sharedApplications());
  inApp([] {
    EXPECT_TRUE(SNUtils::isApplication("com.example.mail"));
    EXPECT_TRUE(SNUtils::isSystemApplication("com.example.mail"));
    EXPECT_TRUE(SNUtils::isHiddenApp("com.example.game"));
    EXPECT_EQ(SNUtils::appName("com.example.mail"), "Mail");
  });
  EXPECT_THAT(takeRequests(), ElementsAre("com.quorvin.sentrel.app.name"));
}

TEST_F(ApplicationQueries, LookUpByDisplayIdentifierComesFirst) {
  auto& controller = *home().applicationController;
  controller.applicationWithDisplayIdentifier = [](const std::string&) { return nullptr; };
  EXPECT_FALSE(SNUtils::isApplication("com.example.mail"));
  EXPECT_FALSE(SNUtils::isSystemApplication("com.example.mail"));
  EXPECT_EQ(SNUtils::appName("com.example.mail"), std::nullopt);
  controller.applicationWithDisplayIdentifier = controller.applicationWithBundleIdentifier;
  controller.applicationWithBundleIdentifier = nullptr;
  EXPECT_TRUE(SNUtils::isSystemApplication("com.example.mail"));
  controller.applicationWithDisplayIdentifier = nullptr;
  EXPECT_FALSE(SNUtils::isApplication("com.example.mail"));
  home().applicationController = nullptr;
  EXPECT_EQ(SNUtils::appName("com.example.mail"), std::nullopt);
}

TEST_F(ApplicationQueries, OnlyThePlatformsOwnExceptionIsCaught) {
  auto& lookUp = home().applicationController->applicationWithBundleIdentifier;
  lookUp = [](const std::string&) -> std::shared_ptr<SBApplication> {
    throw PlatformException("no such thing");
  };
  EXPECT_FALSE(SNUtils::isApplication("com.example.mail"));
  EXPECT_THROW(SNUtils::isSystemApplication("com.example.mail"), PlatformException);
  EXPECT_FALSE(inApp([] { return SNUtils::isSystemApplication("com.example.mail"); }))
      << "what the home screen cannot answer is no answer";
  lookUp = [](const std::string&) -> std::shared_ptr<SBApplication> { throw std::bad_alloc(); };
  EXPECT_THROW(SNUtils::isApplication("com.example.mail"), std::bad_alloc);
}

TEST_F(ApplicationQueries, AnItemIsCalledByItsOwnNameOrItsApplications) {
  const auto named = [this](const std::optional<std::string>& own, const char* application) {
    const auto icon = simulated::makeIcon("x", own);
    if (application)
      icon->application = [applications = device.sharedApplications(), application] {
        return simulated::applicationObject(applications, application);
      };
    return SNUtils::displayName(*icon);
  };
  EXPECT_EQ(named("Post", "com.example.mail"), "Post");
  EXPECT_EQ(named("", "com.example.mail"), "Mail");
  EXPECT_EQ(named(std::nullopt, "com.example.mail"), "Mail");
  EXPECT_EQ(named("", "com.example.anonymous"), std::nullopt);
  EXPECT_EQ(named("", "com.example.unknown"), std::nullopt);
  EXPECT_EQ(named("", nullptr), std::nullopt);
  device.applications().install({"com.example.empty", ""});
  EXPECT_EQ(named(std::nullopt, "com.example.empty"), std::nullopt);
}

}  // namespace
}  // namespace sentrel
