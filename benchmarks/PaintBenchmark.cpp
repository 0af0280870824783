#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>

#include "device/screen/Painter.h"
#include "device/screen/PangoTextMeasuring.h"
#include "device/simulated/SimulatedDevice.h"
#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {
namespace {

constexpr CGSize phoneSize{375, 667};
constexpr double phoneScale = 2;

/// What a finished frame is copied to.
class Display {
 public:
  Display() {
    cairo_set_operator(cairo_.get(), CAIRO_OPERATOR_SOURCE);
    cairo_set_source_rgb(cairo_.get(), 1, 1, 1);
    cairo_paint(cairo_.get());
  }

  void show(const screen::Canvas& frame) {
    cairo_set_source_surface(cairo_.get(), frame.surface(), 0, 0);
    cairo_paint(cairo_.get());
    benchmark::DoNotOptimize(pixel());
  }

  std::uint32_t pixel() const { return surface_.pixel(0, 0); }

 private:
  screen::Canvas surface_{phoneSize, phoneScale};
  screen::CairoHandle cairo_{cairo_create(surface_.surface())};
};

/// A home-screen process that prompts on a phone.
class PromptingProcess {
 public:
  PromptingProcess() { forgetTexts(); }

  /// From now on no text has been measured before.
  void forgetTexts() {
    process_->process().platform().textMeasuring =
        std::make_shared<screen::PangoTextMeasuring>(fonts_);
  }

  /// A window with a new prompt in it, not laid out yet.
  std::shared_ptr<UIWindow> buildPrompt(
      const std::string& title = "Letters",
      const std::string& message = "Scan your fingerprint to continue") {
    auto window = std::make_shared<UIWindow>(CGRect{{}, phoneSize});
    window->setBackgroundColor(UIColor::colorWithRed(0.3, 0.5, 0.8, 1));
    window->setRootViewController(std::make_shared<UIViewController>());
    window->setHidden(false);
    const auto content = SNAuthenticationViewController::makeShared();
    content->setup(title, message);
    const auto alert = SNAlertController::alertControllerWithTitle("Sentrel", std::nullopt,
                                                                   UIAlertControllerStyle::alert);
    alert->setContentViewController(content);
    alert->addAction(
        UIAlertAction::actionWithTitle("Enter Passcode", UIAlertActionStyle::standard, {}));
    alert->addAction(UIAlertAction::actionWithTitle("Cancel", UIAlertActionStyle::cancel, {}));
    window->rootViewController()->presentViewController(alert, /*animated=*/false, {});
    return window;
  }

  void paint(const UIWindow& window) {
    painter_.paint(window, canvas_, {});
    benchmark::DoNotOptimize(canvas_.pixel(0, 0));
  }

  screen::Canvas& canvas() { return canvas_; }

 private:
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_ = device_.launch("com.apple.springboard");
  Process::Scope scope_{process_->process()};
  std::shared_ptr<const screen::PinnedFonts> fonts_ = std::make_shared<screen::PinnedFonts>();
  screen::Painter painter_{fonts_};
  screen::Canvas canvas_{phoneSize, phoneScale};
};

/// The least that a frame of this size costs. Cairo knows of a surface that it is clear and would
/// neither clear it again nor copy it, were it not told that there may be something.
void clearAndBlit(benchmark::State& state) {
  screen::Canvas canvas(phoneSize, phoneScale);
  Display display;
  for (auto _ : state) {
    cairo_surface_mark_dirty(canvas.surface());
    canvas.clear();
    cairo_surface_mark_dirty(canvas.surface());
    display.show(canvas);
  }
  if (display.pixel() != 0) state.SkipWithError("the clear surface was not copied");
}
BENCHMARK(clearAndBlit)->Name("Prompt/bareClearAndBlit")->Unit(benchmark::kMillisecond);

void frame(benchmark::State& state) {
  PromptingProcess process;
  Display display;
  for (auto _ : state) {
    const auto window = process.buildPrompt();
    window->layoutIfNeeded();
    process.canvas().clear();
    process.paint(*window);
    display.show(process.canvas());
  }
}
BENCHMARK(frame)->Name("Prompt/buildLayOutPaintAndBlit")->Unit(benchmark::kMillisecond);

void paint(benchmark::State& state) {
  PromptingProcess process;
  const auto window = process.buildPrompt();
  window->layoutIfNeeded();
  for (auto _ : state)
    process.paint(*window);
}
BENCHMARK(paint)->Name("Prompt/paint")->Unit(benchmark::kMillisecond);

void build(benchmark::State& state) {
  PromptingProcess process;
  for (auto _ : state)
    benchmark::DoNotOptimize(process.buildPrompt());
}
BENCHMARK(build)->Name("Prompt/build")->Unit(benchmark::kMillisecond);

using BuildPrompt = std::shared_ptr<UIWindow> (*)(PromptingProcess& process, int number);

/// Every text was in a prompt before.
std::shared_ptr<UIWindow> textsSeenBefore(PromptingProcess& process, int /*number*/) {
  return process.buildPrompt();
}

/// Title and message are new, the boxes and buttons are like any prompt's.
std::shared_ptr<UIWindow> newTitleAndMessage(PromptingProcess& process, int number) {
  const std::string name = "Letters " + std::to_string(number);
  return process.buildPrompt(name, "Scan your fingerprint to open " + name);
}

/// As the first prompt of a process: what lies behind the layout is loaded, but nothing measured.
std::shared_ptr<UIWindow> nothingMeasuredBefore(PromptingProcess& process, int /*number*/) {
  process.forgetTexts();
  return process.buildPrompt();
}

void layOut(benchmark::State& state, BuildPrompt buildPrompt) {
  PromptingProcess process;
  std::shared_ptr<UIWindow> window;
  int number = 0;
  for (auto _ : state) {
    state.PauseTiming();
    window = buildPrompt(process, ++number);
    state.ResumeTiming();
    window->layoutIfNeeded();
  }
}
BENCHMARK_CAPTURE(layOut, textsSeenBefore, textsSeenBefore)->Name("Prompt/layOut/textsSeenBefore");
BENCHMARK_CAPTURE(layOut, newTitleAndMessage, newTitleAndMessage)
    ->Name("Prompt/layOut/newTitleAndMessage");
BENCHMARK_CAPTURE(layOut, nothingMeasuredBefore, nothingMeasuredBefore)
    ->Name("Prompt/layOut/nothingMeasuredBefore");

/// A flat tree of so many small views.
void paintTree(benchmark::State& state) {
  PromptingProcess process;
  UIWindow window(CGRect{{}, phoneSize});
  for (int i = 0; i < state.range(0); ++i) {
    const auto view = std::make_shared<UIView>(CGRectMake(i % 370, i / 370 % 660, 5, 5));
    view->setBackgroundColor(UIColor::colorWithWhite(0.5, 1));
    window.addSubview(view);
  }
  window.setHidden(false);
  for (auto _ : state)
    process.paint(window);
}
BENCHMARK(paintTree)->Name("Tree/paint")->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sentrel
