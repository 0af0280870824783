// What the view model costs: how searching and laying out grow with the tree, and one prompt.

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "sentrel/uikit/UIAlertController.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {
namespace {

using Attribute = NSLayoutAttribute;

/// The benchmarks run inside a process of a simulated device.
Process& process() {
  static simulated::SimulatedDevice device;
  static const auto launched = device.launch("com.example.bench");
  return launched->process();
}

void constrain(const std::shared_ptr<UIView>& holder, const std::shared_ptr<UIView>& view,
               Attribute attribute, const std::shared_ptr<UIView>& to, Attribute toAttribute,
               double constant = 0, double multiplier = 1) {
  holder->addConstraint(NSLayoutConstraint::constraintWithItem(view, attribute, to, toAttribute,
                                                               multiplier, constant));
}

/// Rows of ten views, each hung on the one before; the rows below one another.
std::shared_ptr<UIView> tree(std::size_t count) {
  auto root = std::make_shared<UIView>(CGRectMake(0, 0, 375, 667));
  std::shared_ptr<UIView> above;
  for (std::size_t made = 1; made < count; made += 11) {
    const auto row = std::make_shared<UIView>(CGRectMake(0, 0, 375, 40));
    root->addSubview(row);
    constrain(root, row, Attribute::top, above ? above : root,
              above ? Attribute::bottom : Attribute::top, 2);
    std::shared_ptr<UIView> left = row;
    for (int i = 0; i < 10; ++i) {
      const auto view = std::make_shared<UIView>(CGRectMake(0, 0, 30, 30));
      row->addSubview(view);
      constrain(row, view, Attribute::left, left, Attribute::left, 35);
      left = view;
    }
    above = row;
  }
  return root;
}

void setCount(benchmark::State& state) {
  state.SetComplexityN(state.range(0));
}

void SearchOfATree(benchmark::State& state) {
  Process::Scope scope(process());
  const auto root = tree(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state)
    benchmark::DoNotOptimize(root->viewWithTag(541231));
  setCount(state);
}
BENCHMARK(SearchOfATree)->Arg(1250)->Arg(2500)->Arg(5000)->Arg(10000)->Complexity(benchmark::oN);

void LayoutOfATree(benchmark::State& state) {
  Process::Scope scope(process());
  const auto root = tree(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    root->setNeedsLayout();
    root->layoutIfNeeded();
  }
  setCount(state);
}
BENCHMARK(LayoutOfATree)->Arg(1250)->Arg(2500)->Arg(5000)->Arg(10000)->Complexity(benchmark::oN);

/// The prompt's content: a glyph, six digit boxes, a title and a message.
std::shared_ptr<UIView> promptContent() {
  auto content = std::make_shared<UIView>(CGRectMake(0, 0, 270, 160));
  const auto add = [&content](const std::shared_ptr<UIView>& view, double width) {
    content->addSubview(view);
    constrain(content, view, Attribute::centerX, content, Attribute::centerX);
    constrain(content, view, Attribute::width, content, Attribute::width, 0, width);
    return view;
  };
  const auto row = add(std::make_shared<UIView>(), 1);
  constrain(content, row, Attribute::top, content, Attribute::top);
  constrain(content, row, Attribute::height, nullptr, Attribute::notAnAttribute, 46);
  std::shared_ptr<UIView> left = row;
  for (int i = 0; i < 6; ++i) {
    const auto box = std::make_shared<UITextField>();
    box->setText("\u2014");
    row->addSubview(box);
    constrain(row, box, Attribute::left, left, Attribute::left, 40);
    constrain(row, box, Attribute::top, row, Attribute::top);
    constrain(row, box, Attribute::bottom, row, Attribute::bottom);
    left = box;
  }
  std::shared_ptr<UIView> above = row;
  for (const char* text : {"Notes", "Scan your fingerprint or enter the passcode to go on"}) {
    const auto label = std::make_shared<UILabel>();
    label->setText(text);
    label->setNumberOfLines(0);
    add(label, 0.8);
    constrain(content, label, Attribute::top, above, Attribute::bottom, 10);
    above = label;
  }
  return content;
}

void LayoutOfAPrompt(benchmark::State& state) {
  Process::Scope scope(process());
  const auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 375, 667));
  const auto root = std::make_shared<UIViewController>();
  window->setRootViewController(root);
  const auto content = std::make_shared<UIViewController>();
  content->setView(promptContent());
  content->setPreferredContentSize({0, 160});
  const auto alert = UIAlertController::alertControllerWithTitle("Sentrel", std::nullopt,
                                                                 UIAlertControllerStyle::alert);
  alert->setContentViewController(content);
  for (const char* title : {"Enter Passcode", "Cancel"})
    alert->addAction(UIAlertAction::actionWithTitle(title, UIAlertActionStyle::standard, {}));
  root->presentViewController(alert, /*animated=*/false, {});
  for (auto _ : state) {
    alert->view()->setNeedsLayout();
    content->view()->setFrame({});
    window->layoutIfNeeded();
  }
}
BENCHMARK(LayoutOfAPrompt);

}  // namespace
}  // namespace sentrel
