#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PKGlyphViewClass.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// The key path of a glyph's state among the animations of its layer (double).
inline constexpr std::string_view glyphStateKeyPath = "state";

/// The pass framework's animated fingerprint or face. The state numbers are its own.
class SENTREL_API PKGlyphView : public UIView {
 public:
  using Completion = std::function<void()>;

  /// Null where the running system has no such class now.
  static std::shared_ptr<PKGlyphView> initWithStyle(std::int64_t style);

  PKGlyphView(std::int64_t style, const PKGlyphViewClass& systemClass);
  static const UIClass& staticClass();

  std::int64_t style() const noexcept { return style_; }
  std::int64_t state() const noexcept { return state_; }
  std::int64_t colorMode() const noexcept { return colorMode_; }
  /// None is the glyph's own colour.
  const std::optional<UIColor>& primaryColor() const noexcept { return primaryColor_; }

  // --- Empty where the running system's glyph views do not answer it --------------------------

  std::function<void(std::int64_t mode, bool animated)> setColorMode;
  std::function<void(const UIColor& color)> setPrimaryColor;
  std::function<void(const UIColor& color, bool animated)> _setPrimaryColor;

  /// Shows `state`. The completion, which may be empty, runs on the main queue when the animation
  /// is over, and on a later turn where there is none.
  std::function<void(std::int64_t state, bool animated, Completion completionHandler)> setState;

 private:
  void answerColors(const PKGlyphViewClass& systemClass);
  void show(std::int64_t state, Seconds duration, Completion completionHandler);

  std::int64_t style_;
  std::int64_t state_ = 0;
  std::int64_t colorMode_ = 0;
  std::optional<UIColor> primaryColor_;
};

}  // namespace sentrel
