#include "device/screen/ApplicationWindow.h"

#include <utility>

#include "device/screen/Fingerprint.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::screen {
namespace {

UIApplication& applicationOf(ProcessContext& process) {
  const ProcessContext::Scope scope(process);
  return UIApplication::sharedApplication();
}

}  // namespace

ApplicationWindow::ApplicationWindow(ProcessContext& process,
                                     const std::shared_ptr<const PinnedFonts>& fonts,
                                     Options options)
    : process_(process),
      application_(applicationOf(process)),
      glyphKind_(options.glyphKind),
      painter_(fonts),
      input_(application_),
      window_(options.title, process.platform().screen->bounds().size,
              process.platform().screen->scale(), makeHandlers(options)) {}

Window::Handlers ApplicationWindow::makeHandlers(Options& options) {
  /// Runs `action` inside the process.
  const auto inside = [this](auto action) {
    return [this, action](auto&&... arguments) {
      const ProcessContext::Scope scope(process_);
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
  const ProcessContext::Scope scope(process_);
  for (const auto& window : application_.windows())
    window->layoutIfNeeded();
  const std::optional<std::size_t> now = fingerprintOf(application_);
  const bool animates = isAnimating(application_);
  // Once more when an animation has ended, for its end.
  const bool moved = std::exchange(wasAnimating_, animates) || animates;
  return std::exchange(shown_, now) != now || moved;
}

void ApplicationWindow::paint(Canvas& canvas) {
  const Platform& platform = process_.platform();
  painter_.paint(
      application_, canvas,
      {.style = platform.screen->userInterfaceStyle().value_or(UIUserInterfaceStyle::light),
       .glyphKind = glyphKind_,
       .moment = platform.clock->steadyNow()});
}

}  // namespace sentrel::screen
