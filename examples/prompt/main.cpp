// Asks the owner for an application in a window, as a home screen does, and prints the outcome.

#include <cstdio>
#include <exception>
#include <functional>

#include "device/real/RealPlatform.h"
#include "device/screen/ApplicationWindow.h"
#include "sentrel/Process.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/uikit/UIViewController.h"
#include "sentrel/uikit/UIWindow.h"

namespace {

int prompt(const char* root, const char* bundleIdentifier) {
  using sentrel::screen::ApplicationWindow;
  sentrel::real::RealPlatform real({.bundleIdentifier = "com.apple.springboard",
                                    .root = root,
                                    .screen = sentrel::real::RealScreen{}});
  sentrel::Process process(real.platform());
  sentrel::Process::setMain(&process);

  const auto home = std::make_shared<sentrel::UIWindow>(process.platform().screen->bounds());
  home->setRootViewController(std::make_shared<sentrel::UIViewController>());
  home->makeKeyAndVisible();
  ApplicationWindow window(process, real.fonts(),
                           {.title = "Prompt", .close = [&] { real.loop().stop(); }});
  const std::function<void()> pump = [&] {
    window.pump();
    real.loop().after(ApplicationWindow::interval, pump);
  };
  pump();

  bool isAllowed = false;
  sentrel::SentrelController::sharedInstance().requiresAuthentication(
      bundleIdentifier, home->rootViewController(), [&](bool authenticated, bool allowed) {
        isAllowed = allowed;
        std::puts(authenticated ? "authenticated" : allowed ? "not protected" : "denied");
        real.loop().stop();
      });
  real.loop().run();
  return isAllowed ? 0 : 1;
}

}  // namespace

int main(int count, char** words) try {
  if (count != 3) return std::fputs("usage: prompt ROOT BUNDLE-ID\n", stderr), 2;
  return prompt(words[1], words[2]);
} catch (const std::exception& error) {
  std::fprintf(stderr, "prompt: %s\n", error.what());
  return 3;
}
