#include "host/SettingsReloader.h"

#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

class SettingsReloader : public TwoProcesses {};

TEST_F(SettingsReloader, BringsAnotherProcessesWriteAsLongAsItLives) {
  useSettings({{"SentrelEnabled", false}});
  // What a question sees that stands right behind the notice.
  const auto isEnabledAfterWriting = [this](bool enabled) {
    std::optional<bool> isEnabled;
    settings().updateSettingsData("SentrelEnabled", PropertyList(enabled),
                                  /*postNotification=*/true);
    app->process().platform().mainQueue->async(
        [&] { isEnabled = SNSettings::sharedSettings().isSentrelEnabled(); });
    device.time().runDue();
    return isEnabled;
  };
  auto reloader = inApp([] { return std::make_unique<host::SettingsReloader>(); });
  EXPECT_EQ(isEnabledAfterWriting(true), true);
  reloader.reset();
  EXPECT_EQ(isEnabledAfterWriting(false), true);
}

/// Says how often it was read.
class CountedFiles final : public PropertyListFiles {
 public:
  DictionaryReading readDictionary(const std::string&) const override {
    ++reads;
    return outcome;
  }
  bool writeDictionary(const std::string&, const PropertyList::Dictionary&) override {
    return false;
  }
  std::unique_ptr<Lock> lock(const std::string&) override { return nullptr; }

  DictionaryReading::Outcome outcome = DictionaryReading::Outcome::absent;
  mutable int reads = 0;
};

TEST_F(SettingsReloader, ReloadsAtOnceThenOnceATurnAndComesBackToAFileThatCannotBeRead) {
  const auto files = std::make_shared<CountedFiles>();
  app->process().platform().propertyListFiles = files;
  const auto reloader = inApp([] { return std::make_unique<host::SettingsReloader>(); });
  const auto readsAfter = [&](int notices, Seconds time) {
    files->reads = 0;
    for (int i = 0; i < notices; ++i)
      device.darwin().post({"com.quorvin.sentrelSettingsChanged", std::nullopt});
    device.time().advance(time);
    return files->reads;
  };
  EXPECT_EQ(readsAfter(100, Seconds(0)), 2) << "at the first, and for the others";
  EXPECT_EQ(readsAfter(0, Seconds(1e3)), 0);
  files->outcome = DictionaryReading::Outcome::couldNot;
  EXPECT_EQ(readsAfter(100, Seconds(0)), 2);
  EXPECT_EQ(readsAfter(1, Seconds(0.5)), 1);
  EXPECT_EQ(readsAfter(0, Seconds(0.5)), 1) << "after one second";
  EXPECT_EQ(readsAfter(0, Seconds(2)), 1) << "after two more";
  EXPECT_GE(readsAfter(0, Seconds(1000)), 15) << "at least once a minute";
  files->outcome = DictionaryReading::Outcome::absent;
  EXPECT_EQ(readsAfter(0, Seconds(1000)), 1);
}

}  // namespace
}  // namespace sentrel
