#pragma once

#include <cstddef>
#include <vector>

#include "sentrel/uikit/LinearSystem.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// Finds the frames that the constraints held in one view tree ask for, and sets them.
///
/// Every view that a constraint names, and every view around such a one, has four unknowns: left
/// and top in the tree's coordinates, width and height. A view that is no constraint's first item
/// stands by its frame. Then come the constraints, from the outside in and in the order in which
/// they were added; one that contradicts those before it does not count. What is open then is taken
/// from the size that a view's content asks for, and at last from the frame that the view had.
/// Transforms play no part: a view is placed as it lies without its own.
class LayoutSolver {
 public:
  explicit LayoutSolver(UIView& root);

  void solve();

 private:
  enum Unknown : std::size_t { left, top, width, height, unknownsOfAView };

  /// A view of the tree, in depth-first order.
  struct Node {
    UIView* view;
    std::size_t parent;
    /// The number after that of the last view inside this one.
    std::size_t end = 0;
    /// The number of its first unknown, where it takes part.
    std::size_t unknowns = 0;
    bool takesPart = false;
    bool isPlaced = false;
    bool hasOwnWidth = false;
    bool hasOwnHeight = false;
  };

  struct HeldConstraint {
    const NSLayoutConstraint* constraint;
    UIView* first;
    UIView* second;
  };

  using Terms = std::vector<LinearSystem::Term>;

  void collect(UIView& view, std::size_t parent);
  void collectConstraints(std::size_t holder);
  bool isInside(const UIView& view, std::size_t holder) const;
  void involve(std::size_t node);
  std::size_t numberUnknowns();

  void addStandingViews();
  void addConstraints();
  void addWidths();
  void addHeights();
  void setFrames();

  void appendAttribute(Terms& terms, const UIView& view, NSLayoutAttribute attribute,
                       double factor) const;
  bool isOpen(const Node& node, Unknown unknown);
  void set(const Node& node, Unknown unknown, double value);
  void keepCorner(const Node& node, Unknown corner);
  void keepSize(const Node& node, Unknown size);

  std::vector<Node> nodes_;
  std::vector<HeldConstraint> constraints_;
  LinearSystem system_{0};
};

}  // namespace sentrel
