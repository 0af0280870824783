#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "sentrel/platform/AssociatedObjects.h"
#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/CALayer.h"
#include "sentrel/uikit/CGAffineTransform.h"
#include "sentrel/uikit/NSLayoutConstraint.h"
#include "sentrel/uikit/UIClass.h"
#include "sentrel/uikit/UIColor.h"
#include "sentrel/uikit/UIResponder.h"

namespace sentrel {

class UIApplication;
class UIWindow;

/// What grows with its superview; everything else keeps its place and size. Values may be added.
enum UIViewAutoresizing : unsigned {
  UIViewAutoresizingNone = 0,
  UIViewAutoresizingFlexibleWidth = 2,
  UIViewAutoresizingFlexibleHeight = 16
};

/// A rectangle of the user interface with what it shows and the views inside it.
///
/// Made by std::make_shared and retained by its superview. A constructor may add subviews, but not
/// use what needs a shared_ptr to the view itself (constraints, delegates): a subclass that does
/// has a factory which finishes the work.
class SENTREL_API UIView : public UIResponder, public AssociatedObjects {
 public:
  explicit UIView(const CGRect& frame = {}, const UIClass& uiClass = staticClass());
  ~UIView() override;

  static const UIClass& staticClass();

  // --- Class -------------------------------------------------------------------------------

  const UIClass& uiClass() const noexcept { return *uiClass_; }
  /// Of that very class.
  bool isMemberOfClassNamed(std::string_view name) const { return uiClass_->name() == name; }
  bool isMemberOfClass(const UIClass& other) const { return isMemberOfClassNamed(other.name()); }
  /// Of that class or one that inherits from it.
  bool isKindOfClassNamed(std::string_view name) const {
    return uiClass_->isSubclassOfClassNamed(name);
  }
  bool isKindOfClass(const UIClass& other) const { return isKindOfClassNamed(other.name()); }

  // --- Geometry ----------------------------------------------------------------------------

  /// In the superview's coordinates; the rectangle around the view where it is transformed.
  CGRect frame() const;
  void setFrame(const CGRect& frame);
  /// In the view's own coordinates. Setting another size keeps the centre.
  CGRect bounds() const noexcept { return bounds_; }
  void setBounds(const CGRect& bounds);
  CGPoint center() const noexcept;
  void setCenter(CGPoint center);
  const CGAffineTransform& transform() const noexcept { return transform_; }
  void setTransform(const CGAffineTransform& transform);
  unsigned autoresizingMask() const noexcept { return autoresizingMask_; }
  void setAutoresizingMask(unsigned mask) noexcept { autoresizingMask_ = mask; }

  // --- Looks -------------------------------------------------------------------------------

  double alpha() const noexcept { return alpha_; }
  void setAlpha(double alpha);
  bool isHidden() const noexcept { return hidden_; }
  void setHidden(bool hidden) noexcept { hidden_ = hidden; }
  /// None paints nothing.
  const std::optional<UIColor>& backgroundColor() const noexcept { return backgroundColor_; }
  void setBackgroundColor(std::optional<UIColor> color);
  bool clipsToBounds() const noexcept { return layer_.masksToBounds(); }
  void setClipsToBounds(bool value) noexcept { layer_.setMasksToBounds(value); }
  CALayer& layer() noexcept { return layer_; }
  const CALayer& layer() const noexcept { return layer_; }

  // --- Tree --------------------------------------------------------------------------------

  /// Back to front.
  const std::vector<std::shared_ptr<UIView>>& subviews() const noexcept { return subviews_; }
  std::shared_ptr<UIView> superview() const;
  /// The window that the view is in, the view itself if it is one, or null.
  virtual std::shared_ptr<UIWindow> window() const;

  /// Puts `view` in front of the other subviews and out of its former superview. Null, the view
  /// itself and a view that contains it are ignored. A view that leaves its window so gives the
  /// typed input up, unasked.
  void addSubview(const std::shared_ptr<UIView>& view);
  /// Takes along what depends on the tree: constraints of the views above that name the view or
  /// something inside it, animations under way, and the typed input.
  void removeFromSuperview();
  /// Ignored for a view that is no subview.
  void bringSubviewToFront(const std::shared_ptr<UIView>& view);
  bool isDescendantOfView(const UIView& other) const noexcept;

  std::int64_t tag() const noexcept { return tag_; }
  void setTag(std::int64_t tag) noexcept { tag_ = tag; }
  /// The view itself or the first inside it, depth first, that has the tag; or null.
  std::shared_ptr<UIView> viewWithTag(std::int64_t tag);

  bool isUserInteractionEnabled() const noexcept { return userInteractionEnabled_; }
  void setUserInteractionEnabled(bool value) noexcept { userInteractionEnabled_ = value; }

  /// Takes the typed input from whatever inside the view has it. With `force` it is not asked.
  /// Whether nothing inside has it any more.
  bool endEditing(bool force);

  // --- Layout ------------------------------------------------------------------------------

  const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints() const noexcept {
    return constraints_;
  }
  /// Null is ignored. What repeats another constraint changes nothing; what contradicts one that
  /// was added before, or stands further out in the tree, does not count.
  void addConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint);
  void removeConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint);

  /// Has updateConstraints run before the next layout.
  void setNeedsUpdateConstraints();
  virtual void updateConstraints() {}
  /// Runs updateConstraints now where it is due, in the view and everything inside it.
  void updateConstraintsIfNeeded();

  void setNeedsLayout();
  /// Lays out the whole tree that the view is in, if anything in it changed since the last time:
  /// constraints first, then layoutSubviews from the outside in, and again until nothing moves.
  void layoutIfNeeded();
  /// For subclasses that place their subviews by hand; overrides begin with the base class's.
  virtual void layoutSubviews() {}

  /// The size that the view's content asks for in a width of at most `maxWidth`, where the content
  /// asks for one.
  virtual std::optional<CGSize> intrinsicContentSize(double maxWidth) const;

  // --- Animation ---------------------------------------------------------------------------

  using Animations = std::function<void()>;
  using AnimationCompletion = std::function<void(bool finished)>;

  /// Runs `animations` at once and records what it changes of any view's frame, alpha, transform
  /// and background colour, each under the property's name as its key. `completion` comes on
  /// the main queue once the time is over; finished is NO when an animation was taken away before.
  static void animateWithDuration(Seconds duration, const Animations& animations,
                                  AnimationCompletion completion = {});
  static void animateWithDuration(Seconds duration, Seconds delay, double usingSpringWithDamping,
                                  double initialSpringVelocity, const Animations& animations,
                                  AnimationCompletion completion = {});

 protected:
  /// Whether what receives the application's typed input is the view or inside it.
  bool containsFirstResponder(const UIApplication& application) const;

 private:
  friend class LayoutSolver;

  static void animate(Seconds duration, Seconds delay, const CATiming& timing,
                      const Animations& animations, AnimationCompletion completion);
  void recordChange(const char* keyPath, CAAnimation::Value from, CAAnimation::Value to);

  void place(CGPoint origin, CGSize size);
  void resizeSubviews(CGSize oldSize);
  void detach();
  UIView& root() noexcept;
  void collectLayoutDue(std::vector<std::shared_ptr<UIView>>& due);
  void dropConstraintsAbout(const UIView& removed);
  void removeAnimationsInside();
  void markUpwards(bool UIView::*flag);

  const UIClass* uiClass_;
  UIView* superview_ = nullptr;
  std::vector<std::shared_ptr<UIView>> subviews_;
  std::vector<std::shared_ptr<NSLayoutConstraint>> constraints_;

  /// The corner of the view as it lies without its transform.
  CGPoint origin_;
  CGRect bounds_;
  CGAffineTransform transform_;
  CALayer layer_;
  std::optional<UIColor> backgroundColor_;
  double alpha_ = 1;
  std::int64_t tag_ = 0;
  unsigned autoresizingMask_ = UIViewAutoresizingNone;
  /// The view's number in the layout under way.
  std::size_t layoutIndex_ = 0;
  bool hidden_ = false;
  bool userInteractionEnabled_ = true;

  bool needsUpdateConstraints_ = false;
  bool needsLayout_ = true;
  /// Whether anything inside the view, or the view itself, is due.
  bool treeNeedsUpdateConstraints_ = false;
  bool treeNeedsLayout_ = true;
};

}  // namespace sentrel
