#include "device/screen/Window.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>
#include <vector>

namespace sentrel::screen {
namespace {

/// On a display that nobody can see.
class ScreenWindow : public testing::Test {
 protected:
  ScreenWindow() { setenv("SDL_VIDEODRIVER", "offscreen", 1); }
  ~ScreenWindow() override { unsetenv("SDL_VIDEODRIVER"); }

  Window::Handlers handlers() {
    Window::Handlers made;
    made.paint = [this](Canvas& canvas) { painted_.push_back(canvas.width()); };
    made.touchBegan = [this](CGPoint point) { touches_.push_back(point); };
    made.touchEnded = [this](CGPoint point) { touches_.push_back(point); };
    made.typeText = [this](const std::string& text) { typed_ += text; };
    made.pressBackspace = [this] { typed_ += "<"; };
    made.close = [this] { typed_ += "X"; };
    return made;
  }

  static void push(SDL_Event event) { SDL_PushEvent(&event); }
  static void pushKey(SDL_Keycode key) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = key;
    push(event);
  }
  static void pushText(const char* text) {
    SDL_Event event{};
    event.type = SDL_TEXTINPUT;
    SDL_strlcpy(event.text.text, text, sizeof event.text.text);
    push(event);
  }

  std::vector<int> painted_;
  std::vector<CGPoint> touches_;
  std::string typed_;
};

TEST_F(ScreenWindow, PaintsOnceAndAgainOnlyWhenItsOwnerNeedsIt) {
  bool needed = false;
  Window::Handlers asking = handlers();
  asking.needsDisplay = [&needed] { return std::exchange(needed, false); };
  Window window("test", {100, 200}, 2, asking);
  window.pump();
  EXPECT_EQ(painted_, std::vector{200});
  for (int i = 0; i < 3; ++i)
    window.pump();
  const std::size_t settled = painted_.size();
  window.pump();
  EXPECT_EQ(painted_.size(), settled);
  needed = true;
  window.pump();
  window.pump();
  EXPECT_EQ(painted_.size(), settled + 1);
}

TEST_F(ScreenWindow, HandsOnTextAndKeysInOrder) {
  Window window("test", {100, 200}, 2, handlers());
  pushText("1");
  pushText("é");
  pushKey(SDLK_BACKSPACE);
  pushKey(SDLK_RETURN);
  SDL_Event quit{};
  quit.type = SDL_QUIT;
  push(quit);
  window.pump();
  EXPECT_EQ(typed_, "1é<\nX");
}

TEST_F(ScreenWindow, AFingerCountsOnceInPoints) {
  Window window("test", {100, 200}, 2, handlers());
  SDL_Event finger{};
  finger.type = SDL_FINGERDOWN;
  finger.tfinger.x = 0.5F;
  finger.tfinger.y = 0.25F;
  push(finger);
  SDL_Event mouse{};
  mouse.type = SDL_MOUSEBUTTONDOWN;
  mouse.button.button = SDL_BUTTON_LEFT;
  mouse.button.which = SDL_TOUCH_MOUSEID;
  push(mouse);
  window.pump();
  EXPECT_EQ(touches_, (std::vector{CGPoint{50, 50}}));
}

TEST(ScreenWindowWithoutDisplay, SaysWhatToDo) {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
    unsetenv(name);
  EXPECT_THAT(
      [] {
        Window("test", {100, 200}, 1, {});
      },
      testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("DISPLAY")));
}

}  // namespace
}  // namespace sentrel::screen
