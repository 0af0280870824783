#include <gmock/gmock.h>

#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/support/BridgeTest.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// What the passcode row says in the log. An application's lines go to the home screen, which
/// writes them.
class PasscodeLog : public BridgeTest {
 protected:
  PasscodeLog() {
    device.system().version = "9.3";
    app = device.launch(std::string(appIdentifier));
    away().notificationCenterController = home().notificationCenterController;
    device.notificationCenter().setVisible(true);
    enableLogging();
  }

  /// What was logged, without the replies of the home screen.
  Lines takeLines() {
    Lines lines = takeAppLog();
    std::erase_if(lines,
                  [](const std::string& line) { return line.find("->response") != line.npos; });
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
  EXPECT_THAT(takeLines(),
              ElementsAre("Calling to showKeyboard:", "Got the bulletinWindow as: (null)",
                          "Got the copy of keyboard as: (null)", "Calling to showKeyboard:",
                          "Got the bulletinWindow as: <SBBulletinWindow>",
                          "Got the copy of keyboard as: (null)", "keyboardWillHide: called"));
}

TEST_F(PasscodeLog, TellsOfALoadedGlyphFrameworkAndNeverOfAPasscode) {
  inApp([] {
    const auto view = SNAuthenticationView::initWithFrame();
    const auto window = std::make_shared<UIWindow>();
    window->addSubview(view);
    view->switchToPasscodeView();
    EXPECT_TRUE(type("918273"));
  });
  device.time().runUntilIdle();
  const Lines lines = takeLines();
  EXPECT_THAT(lines, Contains("PassKitUIFoundation.framework loaded successfully"));
  EXPECT_THAT(lines, Each(Not(HasSubstr("918273"))));
}

}  // namespace
}  // namespace sentrel
