#pragma once

#include <SDL.h>

#include <functional>
#include <memory>
#include <string>

#include "device/screen/Canvas.h"
#include "device/screen/Handles.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel::screen {

/// A window of the desktop that stands for the device's screen.
///
/// It has no loop of its own: the owner's loop calls pump() some sixty times a second. Main thread
/// only.
class Window {
 public:
  /// What the window asks of its owner, all from within pump(). Any may be empty. Points are the
  /// device's, whatever the size of the window.
  struct Handlers {
    /// Asked after the events of each pump, for what only the owner can know.
    std::function<bool()> needsDisplay;
    /// Onto a transparent canvas.
    std::function<void(Canvas&)> paint;
    std::function<void(CGPoint)> touchBegan;
    std::function<void(CGPoint)> touchMoved;
    std::function<void(CGPoint)> touchEnded;
    std::function<void()> touchCancelled;
    /// UTF-8; the return key types "\n".
    std::function<void(const std::string&)> typeText;
    std::function<void()> pressBackspace;
    /// The escape key, for whatever stands for the home button.
    std::function<void()> pressHome;
    std::function<void()> close;
  };

  /// `points` is the device's screen, painted with `scale` pixels a point. Throws
  /// std::runtime_error, which says what to do, where there is no display.
  Window(const std::string& title, CGSize points, double scale, Handlers handlers);
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// Hands on what has happened since the last pump, and paints if anything needs it.
  void pump();

 private:
  /// One user of the video system for as long as it lives.
  struct Video {
    Video();
    ~Video();
    Video(const Video&) = delete;
    Video& operator=(const Video&) = delete;
  };

  void handle(const SDL_Event& event);
  void handleKey(SDL_Keycode key);
  void handleFinger(const SDL_Event& event);
  void handleMouse(const SDL_Event& event);
  void display();

  CGSize points_;
  Handlers handlers_;
  Canvas canvas_;
  Video video_;
  std::unique_ptr<SDL_Window, Releasing<SDL_DestroyWindow>> window_;
  std::unique_ptr<SDL_Renderer, Releasing<SDL_DestroyRenderer>> renderer_;
  std::unique_ptr<SDL_Texture, Releasing<SDL_DestroyTexture>> texture_;
  bool dirty_ = true;
};

}  // namespace sentrel::screen
