#include "sentrel/uikit/CALayer.h"

#include <algorithm>
#include <utility>

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {
namespace {

SteadyTime now() {
  return UIApplication::sharedApplication().platform().clock->steadyNow();
}

void interrupt(const CAAnimation& animation) {
  if (animation.interrupted) *animation.interrupted = true;
}

}  // namespace

void CALayer::addAnimation(CAAnimation animation, std::string key, Seconds delay) {
  dropEnded();
  const auto former = std::ranges::find(animations_, key, &CAAnimation::key);
  if (former != animations_.end() && former->interrupted &&
      former->interrupted == animation.interrupted) {
    // The same run changed the property once more: it still started where it started.
    former->values.back() = animation.values.back();
    return;
  }
  removeAnimationForKey(key);
  animation.key = std::move(key);
  animation.start = now() + delay;
  animations_.push_back(std::move(animation));
}

void CALayer::dropEnded() const {
  if (animations_.empty()) return;
  std::erase_if(animations_, [time = now()](const auto& each) { return each.end() <= time; });
}

const std::vector<CAAnimation>& CALayer::animations() const {
  dropEnded();
  return animations_;
}

std::optional<CAAnimation> CALayer::animationForKey(std::string_view key) const {
  const auto animation = std::ranges::find(animations(), key, &CAAnimation::key);
  return animation == animations_.end() ? std::nullopt : std::optional(*animation);
}

void CALayer::removeAnimationForKey(std::string_view key) {
  dropEnded();
  const auto animation = std::ranges::find(animations_, key, &CAAnimation::key);
  if (animation == animations_.end()) return;
  interrupt(*animation);
  animations_.erase(animation);
}

void CALayer::removeAllAnimations() {
  std::ranges::for_each(animations(), interrupt);
  animations_.clear();
}

}  // namespace sentrel
