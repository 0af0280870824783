#include "sentrel/uikit/CALayer.h"

#include <algorithm>
#include <utility>

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {
namespace {

WallTime now() {
  return UIApplication::sharedApplication().platform().clock->now();
}

void interrupt(const CAAnimation& animation) {
  if (animation.interrupted && animation.end() > now()) *animation.interrupted = true;
}

}  // namespace

void CALayer::addAnimation(CAAnimation animation, std::string key, Seconds delay) {
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

std::optional<CAAnimation> CALayer::animationForKey(std::string_view key) const {
  const auto animation = std::ranges::find(animations_, key, &CAAnimation::key);
  if (animation == animations_.end() || animation->end() <= now()) return std::nullopt;
  return *animation;
}

std::vector<CAAnimation> CALayer::animations(WallTime time) const {
  std::vector<CAAnimation> running;
  std::ranges::copy_if(animations_, std::back_inserter(running),
                       [time](const CAAnimation& each) { return each.end() > time; });
  return running;
}

void CALayer::removeAnimationForKey(std::string_view key) {
  const auto animation = std::ranges::find(animations_, key, &CAAnimation::key);
  if (animation == animations_.end()) return;
  interrupt(*animation);
  animations_.erase(animation);
}

void CALayer::removeAllAnimations() {
  std::ranges::for_each(animations_, interrupt);
  animations_.clear();
}

}  // namespace sentrel
