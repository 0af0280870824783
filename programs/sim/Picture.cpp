#include "programs/sim/Picture.h"

#include "device/screen/Painter.h"
#include "programs/common/Hands.h"
#include "programs/common/NumberPad.h"
#include "programs/sim/Screens.h"
#include "programs/sim/ShownPrompt.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIKeyboard.h"

namespace sentrel::sim {
namespace {

screen::Painter::Settings settingsFor(simulated::SimulatedDevice& device) {
  return {.style = device.screen().userInterfaceStyle().value_or(UIUserInterfaceStyle::light),
          .glyphKind = device.sensor().isPearlIDCapable ? screen::GlyphKind::face
                                                        : screen::GlyphKind::fingerprint,
          .moment = device.time().steadyNow()};
}

void paintProcess(Phone& phone, PhoneProcess& process, screen::Canvas& canvas) {
  process.run([&] {
    const UIApplication& application = UIApplication::sharedApplication();
    for (const auto& window : application.windows())
      window->layoutIfNeeded();
    screen::Painter(phone.fonts()).paint(application, canvas, settingsFor(phone.device()));
  });
}

/// The number pad while a process takes what is typed, its alert moved out of the way as the
/// system does it.
class Keyboard {
 public:
  Keyboard(PhoneProcess& process, CGSize screen, std::vector<ShownPrompt>& prompts)
      : process_(process) {
    process_.run([&] {
      if (!programs::focusedField()) return;
      pad_ = programs::makeKeyboardFor(programs::focusedField(), screen);
      lift_ = systemKeyboardHeight(screen) / 2;
      for (const ShownPrompt& prompt : prompts)
        if (prompt.process == &process_) moved_.push_back(prompt.alertView);
      for (const auto& view : moved_)
        move(*view, -lift_);
    });
  }

  ~Keyboard() {
    process_.run([this] {
      for (const auto& view : moved_)
        move(*view, lift_);
      pad_.reset();
    });
  }

  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

 private:
  static void move(UIView& view, double distance) {
    view.setCenter({view.center().x, view.center().y + distance});
  }

  PhoneProcess& process_;
  std::shared_ptr<UIWindow> pad_;
  std::vector<std::shared_ptr<UIView>> moved_;
  double lift_ = 0;
};

}  // namespace

screen::Canvas takePicture(Phone& phone) {
  simulated::SimulatedDevice& device = phone.device();
  const CGSize size = device.screen().bounds().size;
  screen::Canvas canvas(size, device.screen().scale());
  auto prompts = shownPrompts(phone);
  PhoneProcess& home = phone.homeScreen();
  if (PhoneProcess* application = phone.front()) {
    const Keyboard keyboard(*application, size, prompts);
    paintProcess(phone, *application, canvas);
  }
  std::shared_ptr<UIWindow> lockScreen;
  home.run([&] {
    home.content()->setHidden(phone.front() != nullptr);
    if (device.lock().isLocked()) lockScreen = makeLockScreen(size);
  });
  {
    const Keyboard keyboard(home, size, prompts);
    paintProcess(phone, home, canvas);
  }
  home.run([&] {
    lockScreen.reset();
    home.content()->setHidden(/*hidden=*/false);
  });
  return canvas;
}

}  // namespace sentrel::sim
