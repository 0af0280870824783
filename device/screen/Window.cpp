#include "device/screen/Window.h"

#include <cmath>
#include <stdexcept>
#include <utility>

namespace sentrel::screen {
namespace {

[[noreturn]] void failToOpen() {
  const std::string reason = SDL_GetError();
  throw std::runtime_error(
      "cannot open a window: " + (reason.empty() ? std::string("no display was found") : reason) +
      " (start it in a graphical session, or set DISPLAY or WAYLAND_DISPLAY)");
}

template <class T>
T* opened(T* object) {
  if (!object) failToOpen();
  return object;
}

template <class Handler, class... Arguments>
void call(const Handler& handler, const Arguments&... arguments) {
  if (handler) handler(arguments...);
}

int whole(double points) {
  return static_cast<int>(std::lround(points));
}

}  // namespace

Window::Video::Video() {
  // Without the hint a machine that has no display gets a window that nobody can see.
  SDL_SetHint(SDL_HINT_VIDEODRIVER, "wayland,x11");
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  // The pixels are Cairo's: loading a graphics driver to show them would be for nothing.
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  SDL_ClearError();
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) failToOpen();
}

Window::Video::~Video() {
  SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

Window::Window(const std::string& title, CGSize points, double scale, Handlers handlers)
    : points_(points), handlers_(std::move(handlers)), canvas_(points, scale) {
  window_.reset(
      opened(SDL_CreateWindow(title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                              whole(points.width), whole(points.height), SDL_WINDOW_RESIZABLE)));
  renderer_.reset(opened(SDL_CreateRenderer(window_.get(), -1, SDL_RENDERER_SOFTWARE)));
  SDL_RenderSetLogicalSize(renderer_.get(), whole(points.width), whole(points.height));
  SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "1");
  // The pixels lie in memory as Cairo paints them.
  texture_.reset(
      opened(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_ARGB8888,
                               SDL_TEXTUREACCESS_STREAMING, canvas_.width(), canvas_.height())));
  SDL_StartTextInput();
}

Window::~Window() = default;

void Window::pump() {
  SDL_Event event;
  while (SDL_PollEvent(&event))
    handle(event);
  if (handlers_.needsDisplay && handlers_.needsDisplay()) dirty_ = true;
  if (std::exchange(dirty_, false)) display();
}

void Window::handle(const SDL_Event& event) {
  switch (event.type) {
    case SDL_QUIT:
      return call(handlers_.close);
    case SDL_WINDOWEVENT:
      if (event.window.event == SDL_WINDOWEVENT_EXPOSED) dirty_ = true;
      return;
    case SDL_TEXTINPUT:
      return call(handlers_.typeText, std::string(event.text.text));
    case SDL_KEYDOWN:
      return handleKey(event.key.keysym.sym);
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
      return handleFinger(event);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    case SDL_MOUSEMOTION:
      return handleMouse(event);
    default:
      return;
  }
}

void Window::handleKey(SDL_Keycode key) {
  if (key == SDLK_BACKSPACE) call(handlers_.pressBackspace);
  if (key == SDLK_ESCAPE) call(handlers_.pressHome);
  if (key == SDLK_RETURN || key == SDLK_KP_ENTER) call(handlers_.typeText, std::string("\n"));
}

void Window::handleFinger(const SDL_Event& event) {
  const CGPoint point{event.tfinger.x * points_.width, event.tfinger.y * points_.height};
  if (event.type == SDL_FINGERDOWN) call(handlers_.touchBegan, point);
  if (event.type == SDL_FINGERMOTION) call(handlers_.touchMoved, point);
  if (event.type == SDL_FINGERUP) call(handlers_.touchEnded, point);
}

/// A finger comes as a mouse too, which is passed over.
void Window::handleMouse(const SDL_Event& event) {
  if (event.type == SDL_MOUSEMOTION) {
    const bool pressed = (event.motion.state & SDL_BUTTON_LMASK) != 0;
    if (pressed && event.motion.which != SDL_TOUCH_MOUSEID)
      call(handlers_.touchMoved, CGPoint{double(event.motion.x), double(event.motion.y)});
    return;
  }
  if (event.button.which == SDL_TOUCH_MOUSEID || event.button.button != SDL_BUTTON_LEFT) return;
  const CGPoint point{double(event.button.x), double(event.button.y)};
  call(event.type == SDL_MOUSEBUTTONDOWN ? handlers_.touchBegan : handlers_.touchEnded, point);
}

void Window::display() {
  canvas_.clear();
  if (handlers_.paint) handlers_.paint(canvas_);
  cairo_surface_flush(canvas_.surface());
  SDL_UpdateTexture(texture_.get(), nullptr, cairo_image_surface_get_data(canvas_.surface()),
                    cairo_image_surface_get_stride(canvas_.surface()));
  SDL_RenderClear(renderer_.get());
  SDL_RenderCopy(renderer_.get(), texture_.get(), nullptr, nullptr);
  SDL_RenderPresent(renderer_.get());
}

}  // namespace sentrel::screen
