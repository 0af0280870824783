#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

class UINavigationController;
class UINavigationItem;

/// Owns a view, which is made when it is first asked for, and presents other controllers.
///
/// Presenting and dismissing take effect at once: relations, and the presented view in the window
/// of the presenter's view, above what is there. Completions run on the main queue when the
/// animation's time is over, or on a later turn where it is not animated. Any may be empty.
class SENTREL_API UIViewController : public UIResponder {
 public:
  using Completion = std::function<void()>;

  /// How long presenting or dismissing takes where it is animated.
  static constexpr Seconds transitionDuration{0.4};

  ~UIViewController() override;

  const std::shared_ptr<UIView>& view();
  bool isViewLoaded() const noexcept { return view_ != nullptr; }
  void setView(std::shared_ptr<UIView> view) { view_ = std::move(view); }
  /// Makes the view; this one makes a plain one that fills the screen.
  virtual void loadView();
  virtual void viewDidLoad() {}

  const std::string& title() const noexcept { return title_; }
  virtual void setTitle(std::string title);

  /// What a navigation controller's bar shows for this controller; its title follows the
  /// controller's.
  const std::shared_ptr<UINavigationItem>& navigationItem();

  /// The size that the controller asks of one that shows it inside its own view.
  virtual CGSize preferredContentSize() { return preferredContentSize_; }
  void setPreferredContentSize(CGSize size) noexcept { preferredContentSize_ = size; }

  /// Ignored, the completion with it, when this controller presents one already or `controller`
  /// is presented already.
  virtual void presentViewController(const std::shared_ptr<UIViewController>& controller,
                                     bool animated, Completion completion);

  /// Dismisses what this controller presents, and all that stands above it; else the controller
  /// itself, if it is presented. With nothing to dismiss only the completion runs.
  virtual void dismissViewControllerAnimated(bool animated, Completion completion);

  const std::shared_ptr<UIViewController>& presentedViewController() const noexcept {
    return presented_;
  }
  /// Who presents this controller, or the one that it is a child of.
  std::shared_ptr<UIViewController> presentingViewController() const;

  std::shared_ptr<UIViewController> parentViewController() const { return parent_.lock(); }
  /// The one whose stack the controller, or the one it is a child of, is in; null for none.
  std::shared_ptr<UINavigationController> navigationController() const;
  const std::vector<std::shared_ptr<UIViewController>>& childViewControllers() const noexcept {
    return children_;
  }
  /// Relations only; the views are the caller's to place.
  void addChildViewController(const std::shared_ptr<UIViewController>& child);
  void removeFromParentViewController();
  /// After the parent changed; null when there is none any more.
  virtual void didMoveToParentViewController(const std::shared_ptr<UIViewController>& /*parent*/) {}

 protected:
  /// Puts the view where presented content belongs in `window`: over all of it.
  virtual void showPresentedView(UIWindow& window);
  virtual void hidePresentedView();

  /// Fills this controller's view with that of `child`, or with nothing.
  void showOnly(const std::shared_ptr<UIViewController>& child);

 private:
  std::shared_ptr<UIViewController> shared();
  void dismissPresented();

  std::shared_ptr<UIView> view_;
  std::string title_;
  std::shared_ptr<UINavigationItem> navigationItem_;
  CGSize preferredContentSize_;
  std::shared_ptr<UIViewController> presented_;
  std::weak_ptr<UIViewController> presenting_;
  std::weak_ptr<UIViewController> parent_;
  std::vector<std::shared_ptr<UIViewController>> children_;
};

}  // namespace sentrel
