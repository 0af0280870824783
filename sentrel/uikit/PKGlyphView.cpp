#include "sentrel/uikit/PKGlyphView.h"

#include <string>
#include <utility>

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {

std::shared_ptr<PKGlyphView> PKGlyphView::initWithStyle(std::int64_t style) {
  const auto& systemClass = UIApplication::sharedApplication().platform().glyphViewClass;
  return systemClass ? std::make_shared<PKGlyphView>(style, *systemClass) : nullptr;
}

PKGlyphView::PKGlyphView(std::int64_t style, const PKGlyphViewClass& systemClass)
    : UIView({}, staticClass()), style_(style) {
  answerColors(systemClass);
  if (!systemClass.answersSetState) return;
  setState = [this, duration = systemClass.stateAnimationDuration](
                 std::int64_t state, bool animated, Completion completionHandler) {
    show(state, animated ? duration : Seconds(0), std::move(completionHandler));
  };
}

const UIClass& PKGlyphView::staticClass() {
  static const UIClass uiClass("PKGlyphView", &UIView::staticClass());
  return uiClass;
}

void PKGlyphView::answerColors(const PKGlyphViewClass& systemClass) {
  if (systemClass.answersSetColorMode)
    setColorMode = [this](std::int64_t mode, bool) { colorMode_ = mode; };
  if (systemClass.answersSetPrimaryColor)
    setPrimaryColor = [this](const UIColor& color) { primaryColor_ = color; };
  if (systemClass.answersPrivateSetPrimaryColor)
    _setPrimaryColor = [this](const UIColor& color, bool) { primaryColor_ = color; };
}

void PKGlyphView::show(std::int64_t state, Seconds duration, Completion completionHandler) {
  const std::int64_t from = std::exchange(state_, state);
  const std::string key(glyphStateKeyPath);
  layer().removeAnimationForKey(key);
  if (duration > Seconds(0))
    layer().addAnimation(
        CAAnimation::keyframes(key, {static_cast<double>(from), static_cast<double>(state)},
                               duration, CATiming{}),
        key);
  if (completionHandler)
    UIApplication::sharedApplication().platform().mainQueue->after(duration,
                                                                   std::move(completionHandler));
}

}  // namespace sentrel
