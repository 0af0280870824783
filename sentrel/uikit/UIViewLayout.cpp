#include <algorithm>

#include "sentrel/uikit/LayoutSolver.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {
namespace {

/// A view whose layoutSubviews moves something every time would be laid out for ever.
constexpr int mostRounds = 8;

}  // namespace

void UIView::addConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint) {
  if (!constraint) return;
  constraints_.push_back(constraint);
  setNeedsLayout();
}

void UIView::removeConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint) {
  if (std::erase(constraints_, constraint) > 0) setNeedsLayout();
}

/// A flag that stands in a view stands in all views around it, so the way up ends where it is set.
void UIView::markUpwards(bool UIView::*flag) {
  for (UIView* view = this; view && !(view->*flag); view = view->superview_)
    view->*flag = true;
}

void UIView::setNeedsUpdateConstraints() {
  needsUpdateConstraints_ = true;
  markUpwards(&UIView::treeNeedsUpdateConstraints_);
  setNeedsLayout();
}

void UIView::updateConstraintsIfNeeded() {
  if (!treeNeedsUpdateConstraints_) return;
  treeNeedsUpdateConstraints_ = false;
  const auto inside = subviews_;
  for (const auto& subview : inside)
    subview->updateConstraintsIfNeeded();
  if (!needsUpdateConstraints_) return;
  needsUpdateConstraints_ = false;
  updateConstraints();
}

void UIView::setNeedsLayout() {
  needsLayout_ = true;
  markUpwards(&UIView::treeNeedsLayout_);
}

UIView& UIView::root() noexcept {
  UIView* view = this;
  while (view->superview_)
    view = view->superview_;
  return *view;
}

/// Gathers what is due from the outside in, and forgets that it was: what moves while these are
/// laid out marks the tree again.
void UIView::collectLayoutDue(std::vector<std::shared_ptr<UIView>>& due) {
  if (!treeNeedsLayout_) return;
  treeNeedsLayout_ = false;
  if (needsLayout_) due.push_back(std::static_pointer_cast<UIView>(shared_from_this()));
  needsLayout_ = false;
  for (const auto& subview : subviews_)
    subview->collectLayoutDue(due);
}

void UIView::layoutIfNeeded() {
  const auto top = std::static_pointer_cast<UIView>(root().shared_from_this());
  for (int round = 0; round < mostRounds && top->treeNeedsLayout_; ++round) {
    top->updateConstraintsIfNeeded();
    LayoutSolver(*top).solve();
    std::vector<std::shared_ptr<UIView>> due;
    top->collectLayoutDue(due);
    for (const auto& view : due)
      view->layoutSubviews();
  }
}

}  // namespace sentrel
