#include <cmath>
#include <random>

#include "sentrel/uikit/UILabel.h"
#include "tests/uikit/UIKitTest.h"

namespace sentrel {
namespace {

using Attribute = NSLayoutAttribute;

class Layout : public UIKitTest {
 protected:
  std::shared_ptr<NSLayoutConstraint> constrain(const std::shared_ptr<UIView>& view,
                                                Attribute attribute,
                                                const std::shared_ptr<UIView>& to,
                                                Attribute toAttribute, double constant = 0,
                                                double multiplier = 1) {
    auto constraint = NSLayoutConstraint::constraintWithItem(view, attribute, to, toAttribute,
                                                             multiplier, constant);
    host_->addConstraint(constraint);
    return constraint;
  }

  std::shared_ptr<NSLayoutConstraint> fix(const std::shared_ptr<UIView>& view, Attribute attribute,
                                          double constant) {
    return constrain(view, attribute, nullptr, Attribute::notAnAttribute, constant);
  }

  std::shared_ptr<UIView> host_ = std::make_shared<UIView>(CGRectMake(10, 20, 300, 200));
};

TEST_F(Layout, FindsSizesFromOpposedEdges) {
  const auto view = addView(host_, CGRectMake(1, 2, 3, 4));
  constrain(view, Attribute::left, host_, Attribute::left, 10);
  constrain(view, Attribute::right, host_, Attribute::right, -20);
  constrain(view, Attribute::bottom, host_, Attribute::bottom);
  constrain(view, Attribute::centerY, host_, Attribute::centerY);
  host_->layoutIfNeeded();
  EXPECT_EQ(view->frame(), CGRectMake(10, 0, 270, 200));
}

TEST_F(Layout, MovesWhenAConstantOrTheHostsSizeChanges) {
  const auto view = addView(host_, CGRectMake(0, 0, 40, 30));
  const auto widthConstraint = fix(view, Attribute::width, 63);
  constrain(view, Attribute::right, host_, Attribute::right);
  host_->layoutIfNeeded();
  widthConstraint->setConstant(10);
  host_->layoutIfNeeded();
  EXPECT_EQ(view->frame(), CGRectMake(290, 0, 10, 30));
  host_->setFrame(CGRectMake(0, 0, 500, 200));
  host_->layoutIfNeeded();
  EXPECT_EQ(view->frame(), CGRectMake(490, 0, 10, 30));
}

TEST_F(Layout, ReachesThroughViewsBetweenTheItems) {
  const auto cover = addView(host_, CGRectMake(20, 30, 200, 100));
  cover->setBounds(CGRectMake(4, 0, 200, 100));
  const auto content = addView(cover, CGRectMake(5, 6, 100, 50));
  const auto view = addView(content, CGRectMake(0, 0, 10, 10));
  constrain(view, Attribute::left, host_, Attribute::left, 50);
  constrain(view, Attribute::top, host_, Attribute::top, 50);
  host_->layoutIfNeeded();
  EXPECT_EQ(view->frame(), CGRectMake(50 - 20 - 5 + 4, 50 - 30 - 6, 10, 10));
}

TEST_F(Layout, WhatStandsInAMovedViewMovesAlong) {
  const auto moved = addView(host_, CGRectMake(0, 0, 100, 100));
  const auto standing = addView(moved, CGRectMake(3, 4, 50, 100));
  standing->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
  const auto beside = addView(host_, CGRectMake(0, 0, 10, 10));
  constrain(moved, Attribute::left, host_, Attribute::left, 40);
  constrain(moved, Attribute::width, host_, Attribute::width, 0, 0.5);
  constrain(beside, Attribute::left, standing, Attribute::right);
  host_->layoutIfNeeded();
  EXPECT_EQ(standing->frame(), CGRectMake(3, 4, 100, 100));
  EXPECT_EQ(beside->frame().origin.x, 40 + 3 + 100);
}

TEST_F(Layout, ARepeatedConstraintChangesNothingAndTheFirstOfTwoContraryOnesCounts) {
  const auto view = addView(host_, CGRectMake(0, 0, 40, 30));
  for (const double left : {10, 10, 99})
    constrain(view, Attribute::left, host_, Attribute::left, left);
  fix(view, Attribute::top, 5);
  host_->layoutIfNeeded();
  EXPECT_EQ(view->frame(), CGRectMake(10, 5 - 20, 40, 30)) << "a constant counts from the tree";
}

TEST_F(Layout, ConstraintsGoWithTheViewsThatTheyName) {
  const auto cover = addView(host_);
  const auto inside = addView(cover);
  const auto stays = addView(host_);
  constrain(inside, Attribute::left, host_, Attribute::left);
  constrain(stays, Attribute::left, inside, Attribute::right);
  const auto kept = constrain(stays, Attribute::top, host_, Attribute::top);
  cover->removeFromSuperview();
  EXPECT_EQ(host_->constraints(), std::vector{kept});
}

TEST_F(Layout, ConstraintsAboutViewsElsewhereOrWithoutANumberAreIgnored) {
  const auto view = addView(host_, CGRectMake(1, 2, 3, 4));
  const auto elsewhere = std::make_shared<UIView>(CGRectMake(50, 0, 10, 10));
  constrain(view, Attribute::left, elsewhere, Attribute::left);
  constrain(elsewhere, Attribute::left, view, Attribute::left);
  constrain(view, Attribute::top, std::make_shared<UIView>(), Attribute::top, 70);
  constrain(view, Attribute::left, host_, Attribute::left, std::nan(""));
  constrain(view, Attribute::width, host_, Attribute::width, 0, INFINITY);
  constrain(view, Attribute::top, host_, Attribute::top, 9);
  host_->layoutIfNeeded();
  EXPECT_EQ(view->frame(), CGRectMake(1, 9, 3, 4));
  EXPECT_EQ(elsewhere->frame(), CGRectMake(50, 0, 10, 10));
}

TEST_F(Layout, ALongChainInAnyOrderIsSolved) {
  constexpr int count = 10000;
  std::vector<std::shared_ptr<UIView>> row;
  for (int i = 0; i < count; ++i)
    row.push_back(addView(host_, CGRectMake(0, 0, 10, 10)));
  for (std::size_t i = count - 1; i > 0; --i)
    constrain(row[i], Attribute::left, row[i - 1], Attribute::left, 3);
  constrain(row[0], Attribute::left, host_, Attribute::left, 7);
  host_->layoutIfNeeded();
  EXPECT_EQ(row.back()->frame().origin.x, 7 + 3 * (count - 1));
}

// Constraints drawn from a layout that exists hold again, whatever frames the views had before.
TEST_F(Layout, RandomLayoutsAreFoundAgain) {
  using Value = double (*)(const CGRect&);
  const std::pair<Attribute, Value> attributes[] = {
      {Attribute::left, [](const CGRect& f) { return f.origin.x; }},
      {Attribute::right, [](const CGRect& f) { return f.maxX(); }},
      {Attribute::width, [](const CGRect& f) { return f.size.width; }},
      {Attribute::top, [](const CGRect& f) { return f.origin.y; }},
      {Attribute::bottom, [](const CGRect& f) { return f.maxY(); }},
      {Attribute::height, [](const CGRect& f) { return f.size.height; }},
      {Attribute::centerX, [](const CGRect& f) { return f.midX(); }},
      {Attribute::centerY, [](const CGRect& f) { return f.midY(); }}};
  std::mt19937 random(4711);
  const auto number = [&random](int low, int high) {
    return std::uniform_int_distribution(low, high)(random);
  };
  for (int round = 0; round < 200; ++round) {
    host_ = std::make_shared<UIView>(CGRectMake(0, 0, 320, 480));
    std::vector<std::shared_ptr<UIView>> views{host_};
    std::vector<CGRect> wanted{host_->frame()};
    std::vector<std::function<double()>> rests;
    for (int i = 0; i < 6; ++i) {
      views.push_back(addView(host_, CGRectMake(number(0, 300), 1, 2, 3)));
      wanted.push_back(
          CGRectMake(number(-50, 300), number(-50, 300), number(0, 200), number(0, 200)));
    }
    for (int i = 0; i < 30; ++i) {
      // A view that is never a first item stands by its frame, which is not the wanted one.
      const auto first = static_cast<std::size_t>(i % 6 + 1);
      const auto second = static_cast<std::size_t>(number(0, 6));
      const auto& one = attributes[number(0, 7)];
      const auto& other = attributes[number(0, 7)];
      const double multiplier = number(1, 8) / 4.0;
      const double constant = one.second(wanted[first]) - multiplier * other.second(wanted[second]);
      constrain(views[first], one.first, views[second], other.first, constant, multiplier);
      rests.push_back([&one, &other, &views, first, second, multiplier, constant] {
        return one.second(views[first]->frame()) -
               multiplier * other.second(views[second]->frame()) - constant;
      });
    }
    host_->layoutIfNeeded();
    for (const auto& rest : rests)
      ASSERT_NEAR(rest(), 0, 1e-4) << "round " << round;
  }
}

// --- Texts -------------------------------------------------------------------------------------

TEST_F(Layout, ALabelTakesTheSizeOfItsTextWhereNothingElseIsSaid) {
  const auto label = addView<UILabel>(host_);
  label->setText("twelve chars");
  label->setFont(UIFont::systemFontOfSize(10));
  constrain(label, Attribute::centerX, host_, Attribute::centerX);
  constrain(label, Attribute::top, host_, Attribute::top, 4);
  host_->layoutIfNeeded();
  EXPECT_EQ(label->frame(), CGRectMake(120, 4, 60, 12));
  fix(label, Attribute::height, 108);
  host_->layoutIfNeeded();
  EXPECT_EQ(label->frame(), CGRectMake(120, 4, 60, 108));
}

TEST_F(Layout, ALabelIsAsHighAsItsTextWrapsInTheWidthThatIsFound) {
  const auto label = addView<UILabel>(host_);
  const auto below = addView<UILabel>(host_);
  label->setFont(UIFont::systemFontOfSize(10));
  label->setText("one two three four");
  label->setNumberOfLines(0);
  constrain(label, Attribute::width, host_, Attribute::width, -250);
  constrain(label, Attribute::top, host_, Attribute::top);
  constrain(below, Attribute::top, label, Attribute::bottom, 10);
  host_->layoutIfNeeded();
  EXPECT_EQ(label->frame().size, (CGSize{50, 24}));
  EXPECT_EQ(below->frame().origin.y, 34);

  label->setNumberOfLines(1);
  host_->layoutIfNeeded();
  EXPECT_EQ(label->frame().size, (CGSize{50, 12}));
}

// --- The passes --------------------------------------------------------------------------------

class Hooked : public UIView {
 public:
  using UIView::UIView;

  void updateConstraints() override {
    ++updates;
    if (onUpdate) onUpdate();
  }
  void layoutSubviews() override {
    ++layouts;
    if (onLayout) onLayout();
  }

  int updates = 0;
  int layouts = 0;
  std::function<void()> onUpdate;
  std::function<void()> onLayout;
};

TEST_F(Layout, ConstraintsAddedByTheHookCountInTheSameLayout) {
  const auto hooked = addView<Hooked>(host_);
  hooked->onUpdate = [&] { fix(hooked, Attribute::width, 55); };
  host_->layoutIfNeeded();
  EXPECT_EQ(hooked->updates, 0);
  hooked->setNeedsUpdateConstraints();
  host_->layoutIfNeeded();
  host_->layoutIfNeeded();
  EXPECT_EQ(hooked->updates, 1);
  EXPECT_EQ(hooked->frame().size.width, 55);
  addView(hooked)->setNeedsUpdateConstraints();
  host_->layoutIfNeeded();
  EXPECT_EQ(hooked->updates, 1) << "another view's update is not this one's";
}

TEST_F(Layout, ALayoutByHandMovesWhatHangsOnIt) {
  const auto hooked = addView<Hooked>(host_, CGRectMake(0, 0, 100, 100));
  const auto placed = addView(hooked, CGRectMake(0, 0, 1, 1));
  const auto inner = addView(placed, CGRectMake(0, 0, 10, 10));
  constrain(inner, Attribute::right, placed, Attribute::right);
  hooked->onLayout = [&] { placed->setFrame(CGRectMake(0, 0, hooked->bounds().size.width, 50)); };
  inner->layoutIfNeeded();
  EXPECT_EQ(inner->frame(), CGRectMake(90, 0, 10, 10));
}

TEST_F(Layout, NothingRunsWhereNothingChanged) {
  const auto hooked = addView<Hooked>(host_);
  host_->layoutIfNeeded();
  const int before = hooked->layouts;
  hooked->setAlpha(0.5);
  hooked->setFrame(CGRectMake(5, 5, 0, 0));
  host_->layoutIfNeeded();
  EXPECT_EQ(hooked->layouts, before) << "only its place changed";
  hooked->setFrame(CGRectMake(5, 5, 6, 0));
  host_->layoutIfNeeded();
  EXPECT_EQ(hooked->layouts, before + 1);
}

TEST_F(Layout, ALayoutThatNeverSettlesEnds) {
  const auto hooked = addView<Hooked>(host_);
  hooked->onLayout = [&] { hooked->setNeedsLayout(); };
  host_->layoutIfNeeded();
  EXPECT_GT(hooked->layouts, 0);
}

}  // namespace
}  // namespace sentrel
