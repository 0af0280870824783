#include "programs/springboard/HomeScreenView.h"

#include <cstdio>

#include "device/screen/PangoTextMeasuring.h"
#include "device/screen/Png.h"
#include "programs/common/HomeScreen.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel::programs {

HomeScreenView::HomeScreenView(RealProcess& self)
    : self_(self),
      fonts_(std::make_shared<const screen::PinnedFonts>()),
      alive_(std::make_shared<HomeScreenView*>(this)) {
  self.process().platform().textMeasuring = std::make_shared<screen::PangoTextMeasuring>(fonts_);
  home_ = makeHomeScreen(
      UIScreen::mainScreen().bounds().size,
      self.device().screen().userInterfaceStyle().value_or(UIUserInterfaceStyle::light),
      itemsOf(self.device(), screen::readPng));
  home_->setRootViewController(std::make_shared<UIViewController>());
}

void HomeScreenView::launch(const std::string& bundleIdentifier) {
  SentrelController::sharedInstance().requiresAuthentication(
      bundleIdentifier, home_->rootViewController(),
      [bundleIdentifier](bool authenticated, bool allowed) {
        std::printf("%s %s\n", bundleIdentifier.c_str(),
                    authenticated ? "authenticated"
                    : allowed     ? "allowed"
                                  : "denied");
      });
}

void HomeScreenView::openWindow() {
  if (isOpen_) return;
  window_ = std::make_unique<screen::ApplicationWindow>(
      self_.process(), fonts_,
      screen::ApplicationWindow::Options{.title = "Sentrel",
                                         .glyphKind = self_.device().sensor().isPearlIDCapable
                                                          ? screen::GlyphKind::face
                                                          : screen::GlyphKind::fingerprint,
                                         .pressHome = {},
                                         .close = [this] { isOpen_ = false; }});
  isOpen_ = true;
  pumpLater();
}

void HomeScreenView::pumpLater() {
  self_.loop().after(screen::ApplicationWindow::interval,
                     [weak = std::weak_ptr<HomeScreenView*>(alive_)] {
                       const auto alive = weak.lock();
                       if (!alive) return;
                       HomeScreenView& self = **alive;
                       self.window_->pump();
                       if (!self.isOpen_) return self.window_.reset();
                       self.pumpLater();
                     });
}

}  // namespace sentrel::programs
