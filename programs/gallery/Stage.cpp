#include "programs/gallery/Stage.h"

#include "device/screen/Painter.h"
#include "device/screen/PangoTextMeasuring.h"
#include "programs/common/Hands.h"
#include "programs/common/HomeScreen.h"
#include "programs/common/NumberPad.h"
#include "sentrel/uikit/UIApplication.h"

namespace sentrel::gallery {

std::string describe(const StageOptions& options) {
  return std::string(options.device.name) +
         (options.style == UIUserInterfaceStyle::dark ? "-dark" : "-light");
}

Stage::Stage(const std::shared_ptr<const screen::PinnedFonts>& fonts, const StageOptions& options)
    : fonts_(fonts), options_(options) {
  setUpDevice();
  process_ = device_.launch("com.apple.springboard");
  process_->process().platform().textMeasuring =
      std::make_shared<screen::PangoTextMeasuring>(fonts_);
  process_->run([this] {
    homeWindow_ =
        programs::makeHomeScreen(options_.device.size, options_.style, programs::inventedItems());
  });
}

Stage::~Stage() {
  process_->run([this] {
    keyboardWindow_.reset();
    homeWindow_.reset();
  });
}

void Stage::setUpDevice() {
  device_.screen().setBounds({{}, options_.device.size});
  device_.screen().setScale(options_.device.scale);
  device_.screen().setUserInterfaceIdiom(options_.device.idiom);
  device_.screen().setUserInterfaceStyle(options_.style);
  device_.sensor().isPearlIDCapable = options_.sensor == screen::GlyphKind::face;
  device_.sensor().isTouchIDCapable = options_.sensor == screen::GlyphKind::fingerprint;
  if (!options_.legacyAlerts) return;
  device_.system().canUseAlertView = true;
  device_.system().connectedScenes = 0;
  // The newest that has them; in the dark, one whose alerts can be dark.
  device_.system().version = options_.style == UIUserInterfaceStyle::dark ? "14.0" : "12.0";
}

void Stage::showNumberPad() {
  process_->run([this] { keyboardWindow_ = programs::makeNumberPad(options_.device.size); });
}

void Stage::showKeyboard() {
  process_->run([this] {
    keyboardWindow_ = programs::makeKeyboardFor(programs::focusedField(), options_.device.size);
  });
}

screen::Canvas Stage::picture() {
  return process_->run([this] {
    const UIApplication& application = UIApplication::sharedApplication();
    for (const auto& window : application.windows())
      window->layoutIfNeeded();
    screen::Canvas canvas(options_.device.size, options_.device.scale);
    screen::Painter(fonts_).paint(application, canvas,
                                  {.style = options_.style,
                                   .glyphKind = options_.sensor,
                                   .moment = device_.time().steadyNow()});
    return canvas;
  });
}

}  // namespace sentrel::gallery
