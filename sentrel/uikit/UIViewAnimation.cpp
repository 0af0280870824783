#include <utility>

#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {
namespace {

/// What the changes made now are recorded as.
struct AnimationRun {
  Seconds duration;
  Seconds delay;
  CATiming timing;
  std::shared_ptr<bool> interrupted = std::make_shared<bool>(false);
};

thread_local const AnimationRun* currentRun = nullptr;

class RunScope {
 public:
  explicit RunScope(const AnimationRun& run) : outer_(std::exchange(currentRun, &run)) {}
  ~RunScope() { currentRun = outer_; }
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;

 private:
  const AnimationRun* outer_;
};

}  // namespace

void UIView::animateWithDuration(Seconds duration, const Animations& animations,
                                 AnimationCompletion completion) {
  animate(duration, Seconds(0), {}, animations, std::move(completion));
}

void UIView::animateWithDuration(Seconds duration, Seconds delay, double usingSpringWithDamping,
                                 double initialSpringVelocity, const Animations& animations,
                                 AnimationCompletion completion) {
  const CATiming timing{CATiming::Curve::spring, usingSpringWithDamping, initialSpringVelocity};
  animate(duration, delay, timing, animations, std::move(completion));
}

void UIView::animate(Seconds duration, Seconds delay, const CATiming& timing,
                     const Animations& animations, AnimationCompletion completion) {
  const AnimationRun run{duration, delay, timing};
  if (animations) {
    RunScope scope(run);
    animations();
  }
  if (!completion) return;
  UIApplication::sharedApplication().platform().mainQueue->after(
      delay + duration, [completion = std::move(completion), interrupted = run.interrupted] {
        completion(!*interrupted);
      });
}

void UIView::recordChange(const char* keyPath, CAAnimation::Value from, CAAnimation::Value to) {
  if (!currentRun) return;
  CAAnimation animation;
  animation.keyPath = keyPath;
  animation.values = {from, to};
  animation.duration = currentRun->duration;
  animation.timing = currentRun->timing;
  animation.interrupted = currentRun->interrupted;
  layer_.addAnimation(std::move(animation), keyPath, currentRun->delay);
}

}  // namespace sentrel
