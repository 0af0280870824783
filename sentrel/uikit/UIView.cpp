#include "sentrel/uikit/UIView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {

UIView::UIView(const CGRect& frame, const UIClass& uiClass)
    : uiClass_(&uiClass), origin_(frame.origin), bounds_{{}, frame.size} {}

UIView::~UIView() {
  for (const auto& subview : subviews_)
    subview->superview_ = nullptr;
}

const UIClass& UIView::staticClass() {
  static const UIClass uiClass("UIView", nullptr);
  return uiClass;
}

// --- Geometry ----------------------------------------------------------------------------------

CGPoint UIView::center() const noexcept {
  return {origin_.x + bounds_.size.width / 2, origin_.y + bounds_.size.height / 2};
}

CGRect UIView::frame() const {
  if (transform_.isIdentity()) return {origin_, bounds_.size};
  const auto [width, height] = bounds_.size;
  CGRect around = transform_.apply(CGRectMake(-width / 2, -height / 2, width, height));
  around.origin.x += center().x;
  around.origin.y += center().y;
  return around;
}

void UIView::setFrame(const CGRect& frame) {
  if (transform_.isIdentity()) return place(frame.origin, frame.size);
  const auto [width, height] = frame.size;
  const CGSize size =
      transform_.inverted().apply(CGRectMake(-width / 2, -height / 2, width, height)).size;
  place({frame.midX() - transform_.tx - size.width / 2,
         frame.midY() - transform_.ty - size.height / 2},
        size);
}

void UIView::setBounds(const CGRect& bounds) {
  if (bounds.origin != bounds_.origin) {
    bounds_.origin = bounds.origin;
    setNeedsLayout();
  }
  const CGPoint middle = center();
  place({middle.x - bounds.size.width / 2, middle.y - bounds.size.height / 2}, bounds.size);
}

void UIView::setCenter(CGPoint center) {
  place({center.x - bounds_.size.width / 2, center.y - bounds_.size.height / 2}, bounds_.size);
}

void UIView::setTransform(const CGAffineTransform& transform) {
  if (transform == transform_) return;
  recordChange("transform", transform_, transform);
  transform_ = transform;
}

void UIView::place(CGPoint origin, CGSize size) {
  if (origin == origin_ && size == bounds_.size) return;
  const CGRect before = frame();
  const CGSize oldSize = std::exchange(bounds_.size, size);
  origin_ = origin;
  recordChange("frame", before, frame());
  if (size != oldSize) {
    resizeSubviews(oldSize);
    needsLayout_ = true;
  }
  markUpwards(&UIView::treeNeedsLayout_);
}

void UIView::resizeSubviews(CGSize oldSize) {
  for (const auto& subview : subviews_) {
    CGSize size = subview->bounds_.size;
    if (subview->autoresizingMask_ & UIViewAutoresizingFlexibleWidth)
      size.width += bounds_.size.width - oldSize.width;
    if (subview->autoresizingMask_ & UIViewAutoresizingFlexibleHeight)
      size.height += bounds_.size.height - oldSize.height;
    subview->place(subview->origin_, size);
  }
}

// --- Looks -------------------------------------------------------------------------------------

void UIView::setAlpha(double alpha) {
  if (alpha == alpha_) return;
  recordChange("alpha", alpha_, alpha);
  alpha_ = alpha;
}

void UIView::setBackgroundColor(std::optional<UIColor> color) {
  if (color == backgroundColor_) return;
  const auto shown = [](const auto& each) { return each.value_or(UIColor::clearColor()); };
  recordChange("backgroundColor", shown(backgroundColor_), shown(color));
  backgroundColor_ = color;
}

// --- Tree --------------------------------------------------------------------------------------

std::shared_ptr<UIView> UIView::superview() const {
  if (!superview_) return nullptr;
  return std::static_pointer_cast<UIView>(superview_->weak_from_this().lock());
}

std::shared_ptr<UIWindow> UIView::window() const {
  return superview_ ? superview_->window() : nullptr;
}

bool UIView::isDescendantOfView(const UIView& other) const noexcept {
  for (const UIView* view = this; view; view = view->superview_)
    if (view == &other) return true;
  return false;
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
  if (!view || isDescendantOfView(*view)) return;
  // `view` itself may be an element of the list that detach() changes.
  const auto kept = std::static_pointer_cast<UIView>(view->shared_from_this());
  if (kept->superview_ == this) return bringSubviewToFront(kept);
  const auto formerWindow = kept->window();
  kept->detach();
  kept->superview_ = this;
  subviews_.push_back(kept);
  setNeedsLayout();
  if (kept->treeNeedsUpdateConstraints_) markUpwards(&UIView::treeNeedsUpdateConstraints_);
  if (formerWindow && formerWindow != window()) kept->endEditing(/*force=*/true);
}

void UIView::removeFromSuperview() {
  if (!superview_) return;
  const auto self = shared_from_this();
  endEditing(/*force=*/true);
  removeAnimationsInside();
  detach();
}

void UIView::detach() {
  if (!superview_) return;
  for (UIView* view = superview_; view; view = view->superview_)
    view->dropConstraintsAbout(*this);
  superview_->setNeedsLayout();
  auto& siblings = std::exchange(superview_, nullptr)->subviews_;
  siblings.erase(std::ranges::find(siblings, this, [](const auto& each) { return each.get(); }));
}

void UIView::dropConstraintsAbout(const UIView& removed) {
  std::erase_if(constraints_, [&removed](const auto& constraint) {
    const auto first = constraint->firstItem();
    const auto second = constraint->secondItem();
    return !first || first->isDescendantOfView(removed) ||
           (constraint->hasSecondItem() && (!second || second->isDescendantOfView(removed)));
  });
}

void UIView::removeAnimationsInside() {
  layer_.removeAllAnimations();
  for (const auto& subview : subviews_)
    subview->removeAnimationsInside();
}

void UIView::bringSubviewToFront(const std::shared_ptr<UIView>& view) {
  const auto place = std::ranges::find(subviews_, view);
  if (place != subviews_.end()) std::rotate(place, place + 1, subviews_.end());
}

std::shared_ptr<UIView> UIView::viewWithTag(std::int64_t tag) {
  if (tag_ == tag) return std::static_pointer_cast<UIView>(shared_from_this());
  for (const auto& subview : subviews_)
    if (auto found = subview->viewWithTag(tag)) return found;
  return nullptr;
}

bool UIView::endEditing(bool force) {
  auto& application = UIApplication::sharedApplication();
  if (!containsFirstResponder(application)) return true;
  if (!force) return application.firstResponder()->resignFirstResponder();
  application.giveUpFirstResponder();
  return true;
}

bool UIView::containsFirstResponder(const UIApplication& application) const {
  const auto editing = std::dynamic_pointer_cast<UIView>(application.firstResponder());
  return editing && editing->isDescendantOfView(*this);
}

std::optional<CGSize> UIView::intrinsicContentSize(double /*maxWidth*/) const {
  return std::nullopt;
}

}  // namespace sentrel
