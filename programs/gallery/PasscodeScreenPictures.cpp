#include "programs/common/Hands.h"
#include "programs/gallery/Gallery.h"
#include "programs/gallery/Stage.h"
#include "sentrel/passcode/SNPasscodeViewController.h"
#include "sentrel/uikit/UINavigationController.h"

namespace sentrel::gallery {
namespace {

/// Keeps a passcode for as long as its pictures take.
class Keeper final : public SNPasscodeViewControllerDelegate {
 public:
  explicit Keeper(std::optional<std::string> stored) : stored_(std::move(stored)) {}

  std::optional<std::string> passcode() override { return stored_; }
  void deletePasscode() override { stored_.reset(); }
  bool allowUnlockWithTouchID() override { return false; }
  void saveAllowUnlockWithTouchID(bool) override {}

 private:
  std::optional<std::string> stored_;
};

/// The passcode screen of a stage, brought up and typed into as a user does it.
class PasscodeStage {
 public:
  PasscodeStage(Gallery& gallery, const StageOptions& options, std::optional<std::string> stored)
      : gallery_(gallery),
        stage_(gallery.fonts(), options),
        keeper_(std::make_shared<Keeper>(std::move(stored))) {
    run([](SNPasscodeViewController&) {});
    stage_.process().run([&] {
      const CGSize size = options.device.size;
      UIApplication::sharedApplication().setStatusBarFrame(CGRectMake(0, 0, size.width, 20));
      screen().setDelegate(keeper_);
      host_ = std::make_shared<UIViewController>();
      stage_.homeWindow()->setRootViewController(host_);
    });
  }

  ~PasscodeStage() {
    stage_.process().run([this] { host_.reset(); });
  }

  PasscodeStage(const PasscodeStage&) = delete;
  PasscodeStage& operator=(const PasscodeStage&) = delete;

  template <class Action>
  void run(Action action) {
    stage_.process().run([&] { action(screen()); });
    stage_.wait(Seconds(1));
  }

  const std::shared_ptr<UIViewController>& host() const { return host_; }

  void lock() {
    run([](auto& screen) { screen.showLockscreenWithoutAnimation(); });
  }

  void type(const std::string& text) {
    stage_.process().run([&] { programs::type(text); });
    stage_.wait(Seconds(0.1));
  }

  void enter(const std::string& digits) {
    type(digits);
    stage_.wait(Seconds(1));
  }

  void add(const std::string& name) {
    stage_.showKeyboard();
    gallery_.add("passcode-screen-" + name + "-" + describe(stage_.options()), stage_.picture());
  }

 private:
  static SNPasscodeViewController& screen() { return *SNPasscodeViewController::sharedUser(); }

  Gallery& gallery_;
  Stage stage_;
  std::shared_ptr<Keeper> keeper_;
  std::shared_ptr<UIViewController> host_;
};

constexpr auto light = UIUserInterfaceStyle::light;
constexpr auto dark = UIUserInterfaceStyle::dark;

void paintLockScreens(Gallery& gallery) {
  for (const DeviceKind& device : {phone, smallPhone, largePhone, tablet})
    for (const auto style : {light, dark}) {
      PasscodeStage stage(gallery, {.device = device, .style = style}, "123456");
      stage.lock();
      stage.type("123");
      stage.add("lock");
    }
}

void paintFailures(Gallery& gallery) {
  for (const auto& [device, style] :
       {std::pair(smallPhone, light), {phone, dark}, {tablet, light}}) {
    PasscodeStage stage(gallery, {.device = device, .style = style}, "123456");
    stage.lock();
    stage.enter("111111");
    stage.add("first-failure");
    stage.enter("222222");
    stage.add("second-failure");
  }
}

void paintDigits(Gallery& gallery) {
  for (std::size_t digits = 4; digits <= 10; ++digits)
    for (const DeviceKind& device : {smallPhone, phone, tablet}) {
      if (device.idiom == UIUserInterfaceIdiom::pad && digits < 10) continue;
      PasscodeStage stage(gallery, {.device = device}, std::string(digits, '7'));
      stage.lock();
      stage.type("77");
      stage.add(std::to_string(digits) + "-digits");
    }
}

void paintTurned(Gallery& gallery) {
  for (const DeviceKind& device : {smallPhone, largePhone, tablet}) {
    PasscodeStage stage(gallery, {.device = turned(device)}, "123456");
    stage.lock();
    stage.enter("111111");
    stage.type("12");
    stage.add("landscape");
    stage.run([](auto& screen) { screen.view()->endEditing(/*force=*/true); });
    stage.add("landscape-without-keyboard");
  }
}

void paintSettings(Gallery& gallery) {
  for (const DeviceKind& device : {smallPhone, phone, tablet}) {
    PasscodeStage stage(gallery, {.device = device}, std::nullopt);
    stage.run([&](auto& screen) {
      screen.setHidesCancelButton(false);
      screen.setDisplayAdditionalInfoDuringSettingPasscode(true);
      screen.showForEnablingPasscodeInViewController(stage.host(), /*asModal=*/true);
    });
    stage.add("enable");
    stage.enter("1234");
    stage.add("confirm");
    stage.enter("4321");
    stage.add("no-match");
  }
}

void paintComplex(Gallery& gallery) {
  for (const auto& [device, style] :
       {std::pair(smallPhone, light), {phone, dark}, {tablet, light}, {turned(phone), light}}) {
    PasscodeStage stage(gallery, {.device = device, .style = style}, std::nullopt);
    stage.run([&](auto& screen) {
      // The first look at the view takes the form for a simple one.
      screen.view();
      screen.setIsSimple(false, nullptr, /*asModal=*/true);
      screen.showForEnablingPasscodeInViewController(stage.host(), /*asModal=*/true);
    });
    stage.add(device.size.width == turned(phone).size.width ? "complex-empty-landscape"
                                                            : "complex-empty");
    stage.type("a longer word");
    stage.add(device.size.width == turned(phone).size.width ? "complex-landscape" : "complex");
  }
}

void paintBars(Gallery& gallery) {
  for (const auto& [device, style] : {std::pair(phone, light), {phone, dark}, {tablet, light}}) {
    PasscodeStage stage(gallery, {.device = device, .style = style}, "1234");
    stage.run([](auto& screen) {
      screen.showLockScreenWithAnimation(/*animated=*/true, /*withLogout=*/true, "Log out");
    });
    stage.add("logout");
    stage.run([](auto& screen) { screen.view()->endEditing(/*force=*/true); });
    stage.add("logout-without-keyboard");
  }
}

}  // namespace

void paintPasscodeScreens(Gallery& gallery) {
  paintLockScreens(gallery);
  paintFailures(gallery);
  paintDigits(gallery);
  paintTurned(gallery);
  paintSettings(gallery);
  paintComplex(gallery);
  paintBars(gallery);
}

}  // namespace sentrel::gallery
