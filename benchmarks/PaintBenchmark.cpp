#include <benchmark/benchmark.h>

#include <memory>

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

/// A home-screen process that prompts on a phone.
class PromptingProcess {
 public:
  PromptingProcess() {
    process_->process().platform().textMeasuring =
        std::make_shared<screen::PangoTextMeasuring>(fonts_);
  }

  /// A window with a new prompt in it, not laid out yet.
  std::shared_ptr<UIWindow> buildPrompt() {
    auto window = std::make_shared<UIWindow>(CGRect{{}, phoneSize});
    window->setBackgroundColor(UIColor::colorWithRed(0.3, 0.5, 0.8, 1));
    window->setRootViewController(std::make_shared<UIViewController>());
    window->setHidden(false);
    const auto content = SNAuthenticationViewController::makeShared();
    content->setup("Letters", "Scan your fingerprint to continue");
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

 private:
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_ = device_.launch("com.apple.springboard");
  Process::Scope scope_{process_->process()};
  std::shared_ptr<const screen::PinnedFonts> fonts_ = std::make_shared<screen::PinnedFonts>();
  screen::Painter painter_{fonts_};
  screen::Canvas canvas_{phoneSize, phoneScale};
};

/// The least that a frame of this size costs: clear one surface, and copy it to another.
void clearAndBlit(benchmark::State& state) {
  screen::Canvas canvas(phoneSize, phoneScale);
  screen::Canvas display(phoneSize, phoneScale);
  const screen::CairoHandle cairo(cairo_create(display.surface()));
  cairo_set_operator(cairo.get(), CAIRO_OPERATOR_SOURCE);
  cairo_set_source_surface(cairo.get(), canvas.surface(), 0, 0);
  for (auto _ : state) {
    canvas.clear();
    cairo_paint(cairo.get());
    benchmark::DoNotOptimize(display.pixel(0, 0));
  }
}
BENCHMARK(clearAndBlit)->Name("Prompt/bareClearAndBlit")->Unit(benchmark::kMillisecond);

void buildLayOutAndPaint(benchmark::State& state) {
  PromptingProcess process;
  for (auto _ : state) {
    const auto window = process.buildPrompt();
    window->layoutIfNeeded();
    process.paint(*window);
  }
}
BENCHMARK(buildLayOutAndPaint)->Name("Prompt/buildLayOutAndPaint")->Unit(benchmark::kMillisecond);

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

void layOut(benchmark::State& state) {
  PromptingProcess process;
  for (auto _ : state) {
    state.PauseTiming();
    const auto window = process.buildPrompt();
    state.ResumeTiming();
    window->layoutIfNeeded();
  }
}
BENCHMARK(layOut)->Name("Prompt/layOut")->Unit(benchmark::kMillisecond);

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
