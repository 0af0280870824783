#include "host/SettingsReloader.h"

#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

class SettingsReloader : public TwoProcesses {};

TEST_F(SettingsReloader, BringsAnotherProcessesWriteAsLongAsItLives) {
  useSettings({{"SentrelEnabled", false}});
  const auto isEnabledInApp = [this] {
    return inApp([] { return SNSettings::sharedSettings().isSentrelEnabled(); });
  };
  const auto write = [this](bool enabled) {
    settings().updateSettingsData("SentrelEnabled", PropertyList(enabled),
                                  /*postNotification=*/true);
    device.time().runDue();
  };
  auto reloader = inApp([] { return std::make_unique<host::SettingsReloader>(); });
  write(true);
  EXPECT_TRUE(isEnabledInApp());
  reloader.reset();
  write(false);
  EXPECT_TRUE(isEnabledInApp());
}

}  // namespace
}  // namespace sentrel
