#include <gmock/gmock.h>

#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/support/PromptDriver.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// What the passcode row says in the log. An application's lines go to the home screen, which
/// writes them.
class PasscodeLog : public TwoProcesses {
 protected:
  PasscodeLog() {
    device.system().version = "9.3";
    app = device.launch(std::string(appIdentifier));
    app->process().platform().notificationCenterController =
        springBoard->process().platform().notificationCenterController;
    device.notificationCenter().setVisible(true);
    useSettings({{std::string(settings_keys::enableLogging), true}});
  }

  static std::string line(const std::string& text) {
    return std::string(appIdentifier) + " < - > " + text;
  }

  /// Those of the row, in order.
  std::vector<std::string> rowLines() {
    std::vector<std::string> lines;
    for (const std::string& each : logLines)
      if (each.find("->response") == std::string::npos) lines.push_back(each);
    return lines;
  }
};

TEST_F(PasscodeLog, TellsOfTheKeyboardAndOfTheBorrowedOne) {
  inApp([] {
    static const UIClass bulletinClass("SBBulletinWindow", &UIWindow::staticClass());
    const auto row = SNSimplePasscodeView::initWithFrame({});
    row->setupDigitFields();
    row->showKeyboard();
    const auto bulletin = std::make_shared<UIWindow>(CGRect(), bulletinClass);
    row->showKeyboard();
    row->keyboardWillHide({});
  });
  EXPECT_THAT(
      rowLines(),
      ElementsAre(line("Calling to showKeyboard:"), line("Got the bulletinWindow as: (null)"),
                  line("Got the copy of keyboard as: (null)"), line("Calling to showKeyboard:"),
                  line("Got the bulletinWindow as: <SBBulletinWindow>"),
                  line("Got the copy of keyboard as: (null)"), line("keyboardWillHide: called")));
}

TEST_F(PasscodeLog, TellsOfALoadedGlyphFrameworkAndNeverOfAPasscode) {
  inApp([] {
    const auto view = SNAuthenticationView::initWithFrame();
    view->switchToPasscodeView();
    EXPECT_TRUE(type("918273"));
  });
  device.time().runUntilIdle();
  EXPECT_EQ(rowLines().front(), line("PassKitUIFoundation.framework loaded successfully"));
  for (const std::string& each : logLines)
    EXPECT_THAT(each, Not(HasSubstr("918273")));
}

}  // namespace
}  // namespace sentrel
