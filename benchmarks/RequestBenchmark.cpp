#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>

#include "device/screen/Painter.h"
#include "device/screen/PangoTextMeasuring.h"
#include "device/simulated/SimulatedDevice.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SettingsKeys.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {
namespace {

constexpr CGSize phoneSize{375, 667};
constexpr double phoneScale = 2;
constexpr BiometricEvent match = 3;

/// Longer than every delay of a prompt: a time that costs nothing.
constexpr Seconds untilAllIsOver{10};

/// A home-screen process with so many open sessions, in which prompts come and go. All that is
/// measured is the processor's time; the stated delays pass on virtual time.
class AskedProcess {
 public:
  explicit AskedProcess(std::int64_t sessions) {
    device_.files().put(
        std::string(settingsFilePath),
        {{"SentrelEnabled", true}, {"SentrelRemember", true}, {"SentrelRememberTime", 1e6}});
    SNSettings::sharedSettings().reloadSettings();
    process_->process().platform().textMeasuring =
        std::make_shared<screen::PangoTextMeasuring>(fonts_);
    for (std::int64_t i = 0; i < sessions; ++i)
      controller().updateLastAuthenticationTime(SessionKey("session " + std::to_string(i)));
    window_->setBackgroundColor(UIColor::colorWithRed(0.3, 0.5, 0.8, 1));
    window_->setRootViewController(std::make_shared<UIViewController>());
    window_->setHidden(false);
  }

  /// Always the same request, so that sessions do not grow.
  void request() {
    controller().requiresAuthentication(
        "Letters", "Scan your fingerprint to continue", window_->rootViewController(),
        [this](bool authenticated, bool) { wasAuthenticated_ = authenticated; });
  }

  void untilPromptIsUp() { device_.time().advance(Seconds(0.1)); }

  void paintScreen() {
    for (const auto& window : UIApplication::sharedApplication().windows())
      window->layoutIfNeeded();
    painter_.paint(UIApplication::sharedApplication(), canvas_,
                   {.moment = device_.time().steadyNow()});
    benchmark::DoNotOptimize(canvas_.pixel(0, 0));
  }

  void untilMatchIsTold() {
    device_.sensor().emit(match);
    device_.time().advance(untilAllIsOver);
  }

  bool takeAuthenticated() { return std::exchange(wasAuthenticated_, false); }
  bool isPromptUp() { return controller().isAlertShowing(); }

 private:
  static SentrelController& controller() { return SentrelController::sharedInstance(); }

  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_ = device_.launch("com.apple.springboard");
  Process::Scope scope_{process_->process()};
  std::shared_ptr<const screen::PinnedFonts> fonts_ = std::make_shared<screen::PinnedFonts>();
  screen::Painter painter_{fonts_};
  screen::Canvas canvas_{phoneSize, phoneScale};
  std::shared_ptr<UIWindow> window_ = std::make_shared<UIWindow>(CGRect{{}, phoneSize});
  bool wasAuthenticated_ = false;
};

template <class Measured>
double secondsOf(Measured measured) {
  const auto start = std::chrono::steady_clock::now();
  measured();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void fromMatchToCompletion(benchmark::State& state) {
  AskedProcess process(state.range(0));
  for (auto _ : state) {
    process.request();
    process.untilPromptIsUp();
    state.SetIterationTime(secondsOf([&] { process.untilMatchIsTold(); }));
    if (!process.takeAuthenticated()) return state.SkipWithError("the match was not told");
  }
}
BENCHMARK(fromMatchToCompletion)
    ->Name("Request/fromMatchToCompletion")
    ->ArgName("sessions")
    ->Arg(1)
    ->Arg(10'000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

void fromRequestToFirstPaint(benchmark::State& state) {
  AskedProcess process(state.range(0));
  for (auto _ : state) {
    state.SetIterationTime(secondsOf([&] {
      process.request();
      process.untilPromptIsUp();
      process.paintScreen();
    }));
    if (!process.isPromptUp()) return state.SkipWithError("no prompt was shown");
    process.untilMatchIsTold();
  }
}
BENCHMARK(fromRequestToFirstPaint)
    ->Name("Request/fromRequestToFirstPaint")
    ->ArgName("sessions")
    ->Arg(1)
    ->Arg(10'000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace sentrel
