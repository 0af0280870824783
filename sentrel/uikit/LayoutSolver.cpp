#include "sentrel/uikit/LayoutSolver.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sentrel {

LayoutSolver::LayoutSolver(UIView& root) {
  collect(root, 0);
  for (std::size_t holder = 0; holder < nodes_.size(); ++holder)
    collectConstraints(holder);
}

void LayoutSolver::solve() {
  if (constraints_.empty()) return;
  system_ = LinearSystem(numberUnknowns());
  addStandingViews();
  addConstraints();
  addWidths();
  addHeights();
  setFrames();
}

// --- What there is to solve --------------------------------------------------------------------

void LayoutSolver::collect(UIView& view, std::size_t parent) {
  const std::size_t number = nodes_.size();
  view.layoutIndex_ = number;
  nodes_.push_back({&view, parent});
  for (const auto& subview : view.subviews_)
    collect(*subview, number);
  nodes_[number].end = nodes_.size();
}

bool LayoutSolver::isInside(const UIView& view, std::size_t holder) const {
  const std::size_t number = view.layoutIndex_;
  return number >= holder && number < nodes_[holder].end && nodes_[number].view == &view;
}

void LayoutSolver::collectConstraints(std::size_t holder) {
  for (const auto& constraint : nodes_[holder].view->constraints()) {
    const auto first = constraint->firstItem();
    const auto second = constraint->secondItem();
    if (!first || !isInside(*first, holder)) continue;
    if (constraint->hasSecondItem() && (!second || !isInside(*second, holder))) continue;
    constraints_.push_back({constraint.get(), first.get(), second.get()});
    Node& node = nodes_[first->layoutIndex_];
    node.isPlaced = true;
    node.hasOwnWidth |= constraint->firstAttribute() == NSLayoutAttribute::width;
    node.hasOwnHeight |= constraint->firstAttribute() == NSLayoutAttribute::height;
    involve(first->layoutIndex_);
    if (second) involve(second->layoutIndex_);
  }
}

void LayoutSolver::involve(std::size_t node) {
  while (!nodes_[node].takesPart) {
    nodes_[node].takesPart = true;
    node = nodes_[node].parent;
  }
}

std::size_t LayoutSolver::numberUnknowns() {
  std::size_t count = 0;
  for (Node& node : nodes_)
    if (node.takesPart) {
      node.unknowns = count;
      count += unknownsOfAView;
    }
  return count;
}

// --- Equations ---------------------------------------------------------------------------------

bool LayoutSolver::isOpen(const Node& node, Unknown unknown) {
  return !system_.value(node.unknowns + unknown);
}

void LayoutSolver::set(const Node& node, Unknown unknown, double value) {
  system_.add({{node.unknowns + unknown, 1}}, value);
}

/// Left or top as far from the parent's as the frame has it. The root has no parent: its own corner
/// is where the tree's coordinates have it.
void LayoutSolver::keepCorner(const Node& node, Unknown corner) {
  const UIView& view = *node.view;
  const Node& parent = nodes_[node.parent];
  const auto along = [corner](CGPoint point) { return corner == left ? point.x : point.y; };
  if (parent.view == &view) return set(node, corner, along(view.origin_));
  system_.add({{node.unknowns + corner, 1}, {parent.unknowns + corner, -1}},
              along(view.origin_) - along(parent.view->bounds().origin));
}

/// Width or height as the frame has it, or as much smaller than the parent's where it grows with
/// the parent.
void LayoutSolver::keepSize(const Node& node, Unknown size) {
  const UIView& view = *node.view;
  const Node& parent = nodes_[node.parent];
  const auto along = [size](const UIView& each) {
    const CGSize both = each.bounds().size;
    return size == width ? both.width : both.height;
  };
  const unsigned flexible =
      size == width ? UIViewAutoresizingFlexibleWidth : UIViewAutoresizingFlexibleHeight;
  if (parent.view == &view || !(view.autoresizingMask() & flexible))
    return set(node, size, along(view));
  system_.add({{node.unknowns + size, 1}, {parent.unknowns + size, -1}},
              along(view) - along(*parent.view));
}

void LayoutSolver::addStandingViews() {
  for (const Node& node : nodes_) {
    if (!node.takesPart || node.isPlaced) continue;
    keepCorner(node, left);
    keepCorner(node, top);
    keepSize(node, width);
    keepSize(node, height);
  }
}

void LayoutSolver::appendAttribute(Terms& terms, const UIView& view, NSLayoutAttribute attribute,
                                   double factor) const {
  const std::size_t first = nodes_[view.layoutIndex_].unknowns;
  const auto append = [&](Unknown unknown, double share) {
    terms.push_back({first + unknown, factor * share});
  };
  switch (attribute) {
    case NSLayoutAttribute::left:
      return append(left, 1);
    case NSLayoutAttribute::top:
      return append(top, 1);
    case NSLayoutAttribute::width:
      return append(width, 1);
    case NSLayoutAttribute::height:
      return append(height, 1);
    case NSLayoutAttribute::right:
      append(left, 1);
      return append(width, 1);
    case NSLayoutAttribute::bottom:
      append(top, 1);
      return append(height, 1);
    case NSLayoutAttribute::centerX:
      append(left, 1);
      return append(width, 0.5);
    case NSLayoutAttribute::centerY:
      append(top, 1);
      return append(height, 0.5);
    case NSLayoutAttribute::notAnAttribute:
      return;
  }
}

void LayoutSolver::addConstraints() {
  Terms terms;
  for (const auto& [constraint, first, second] : constraints_) {
    terms.clear();
    appendAttribute(terms, *first, constraint->firstAttribute(), 1);
    if (second)
      appendAttribute(terms, *second, constraint->secondAttribute(), -constraint->multiplier());
    system_.add(terms, constraint->constant());
  }
}

/// All widths come before any height, because a text's height depends on its width.
void LayoutSolver::addWidths() {
  constexpr double unlimited = std::numeric_limits<double>::infinity();
  for (const Node& node : nodes_) {
    if (!node.isPlaced || node.hasOwnWidth || !isOpen(node, width)) continue;
    if (const auto size = node.view->intrinsicContentSize(unlimited)) set(node, width, size->width);
  }
  for (const Node& node : nodes_) {
    if (!node.isPlaced) continue;
    if (isOpen(node, width)) keepSize(node, width);
    if (isOpen(node, left)) keepCorner(node, left);
  }
}

void LayoutSolver::addHeights() {
  for (const Node& node : nodes_) {
    if (!node.isPlaced || node.hasOwnHeight || !isOpen(node, height)) continue;
    const double maxWidth = system_.value(node.unknowns + width).value_or(0);
    if (const auto size = node.view->intrinsicContentSize(maxWidth))
      set(node, height, size->height);
  }
  for (const Node& node : nodes_) {
    if (!node.isPlaced) continue;
    if (isOpen(node, height)) keepSize(node, height);
    if (isOpen(node, top)) keepCorner(node, top);
  }
}

// --- Frames ------------------------------------------------------------------------------------

void LayoutSolver::setFrames() {
  const auto valueOf = [this](const Node& node, Unknown unknown, double otherwise) {
    return system_.value(node.unknowns + unknown).value_or(otherwise);
  };
  for (const Node& node : nodes_) {
    if (!node.isPlaced) continue;
    UIView& view = *node.view;
    const Node& parent = nodes_[node.parent];
    CGPoint origin = view.origin_;
    if (parent.view != &view) {
      const CGPoint inside = parent.view->bounds().origin;
      origin.x = valueOf(node, left, 0) - valueOf(parent, left, 0) + inside.x;
      origin.y = valueOf(node, top, 0) - valueOf(parent, top, 0) + inside.y;
    }
    const CGSize old = view.bounds().size;
    view.place(origin, {valueOf(node, width, old.width), valueOf(node, height, old.height)});
  }
}

}  // namespace sentrel
