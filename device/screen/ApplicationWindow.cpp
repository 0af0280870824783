#include "device/screen/ApplicationWindow.h"

#include <utility>

#include "device/screen/Fingerprint.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::screen {

ApplicationWindow::ApplicationWindow(Process& process,
                                     const std::shared_ptr<const PinnedFonts>& fonts,
                                     Options options)
    : process_(process),
      glyphKind_(options.glyphKind),
      painter_(fonts),
      input_(process.application()),
      window_(options.title, process.platform().screen->bounds().size,
              process.platform().screen->scale(), makeHandlers(options)) {}

Window::Handlers ApplicationWindow::makeHandlers(Options& options) {
  /// Runs `action` inside the process.
  const auto inside = [this](auto action) {
    return [this, action](auto&&... arguments) {
      const Process::Scope scope(process_);
      action(arguments...);
    };
  };
  Window::Handlers made;
  made.needsDisplay = [this] { return needsDisplay(); };
  made.paint = inside([this](Canvas& canvas) { paint(canvas); });
  made.touchBegan = inside([this](CGPoint point) { input_.touchBegan(point); });
  made.touchMoved = inside([this](CGPoint point) { input_.touchMoved(point); });
  made.touchEnded = inside([this](CGPoint point) { input_.touchEnded(point); });
  made.touchCancelled = inside([this] { input_.touchCancelled(); });
  made.typeText = inside([this](const std::string& text) { input_.typeText(text); });
  made.pressBackspace = inside([this] { input_.pressBackspace(); });
  made.pressHome = std::move(options.pressHome);
  made.close = std::move(options.close);
  return made;
}

bool ApplicationWindow::needsDisplay() {
  const Process::Scope scope(process_);
  for (const auto& window : process_.application().windows())
    window->layoutIfNeeded();
  const std::optional<std::size_t> now = fingerprintOf(process_.application());
  const bool animates = isAnimating(process_.application(), process_.platform().clock->now());
  // Once more when an animation has ended, for its end.
  const bool moved = std::exchange(wasAnimating_, animates) || animates;
  return std::exchange(shown_, now) != now || moved;
}

void ApplicationWindow::paint(Canvas& canvas) {
  const Platform& platform = process_.platform();
  painter_.paint(
      process_.application(), canvas,
      {.style = platform.screen->userInterfaceStyle().value_or(UIUserInterfaceStyle::light),
       .glyphKind = glyphKind_,
       .moment = platform.clock->now()});
}

}  // namespace sentrel::screen
