#include "sentrel/uikit/UIColor.h"

#include "sentrel/uikit/Numbers.h"

namespace sentrel {
namespace {

/// The looks of one system colour in the two styles.
struct SystemColor {
  const char* name;
  UIColor::Components light;
  UIColor::Components dark;
};

constexpr double byte(int value) {
  return value / 255.0;
}

// In the order of UIColor::System. The figures are those that the system documents.
constexpr SystemColor systemColors[] = {
    {"", {}, {}},
    {"labelColor", {0, 0, 0, 1}, {1, 1, 1, 1}},
    {"secondaryLabelColor",
     {byte(60), byte(60), byte(67), 0.6},
     {byte(235), byte(235), byte(245), 0.6}},
    {"systemBackgroundColor", {1, 1, 1, 1}, {0, 0, 0, 1}},
    {"systemBlueColor", {0, byte(122), 1, 1}, {byte(10), byte(132), 1, 1}},
};

struct NamedColor {
  const char* name;
  UIColor color;
};

const char* nameOf(const UIColor& color) {
  static const NamedColor named[] = {
      {"clearColor", UIColor::clearColor()},         {"blackColor", UIColor::blackColor()},
      {"darkGrayColor", UIColor::darkGrayColor()},   {"grayColor", UIColor::grayColor()},
      {"lightGrayColor", UIColor::lightGrayColor()}, {"whiteColor", UIColor::whiteColor()}};
  for (const NamedColor& each : named)
    if (each.color == color) return each.name;
  return nullptr;
}

std::string describeAlpha(double alpha) {
  return alpha == 1 ? "" : " alpha " + describeNumber(alpha);
}

}  // namespace

UIColor UIColor::colorWithRed(double red, double green, double blue, double alpha) {
  return UIColor(Components{red, green, blue, alpha});
}

UIColor UIColor::colorWithWhite(double white, double alpha) {
  return UIColor(Components{white, white, white, alpha});
}

UIColor UIColor::colorWithAlphaComponent(double alpha) const {
  UIColor color = *this;
  color.components_.alpha = alpha;
  return color;
}

UIColor::Components UIColor::resolved(UIUserInterfaceStyle style) const noexcept {
  if (system_ == System::none) return components_;
  const SystemColor& color = systemColors[static_cast<int>(system_)];
  Components components = style == UIUserInterfaceStyle::dark ? color.dark : color.light;
  components.alpha *= components_.alpha;
  return components;
}

std::string UIColor::description() const {
  const auto& [red, green, blue, alpha] = components_;
  if (system_ != System::none)
    return systemColors[static_cast<int>(system_)].name + describeAlpha(alpha);
  if (const char* name = nameOf(*this)) return name;
  if (red == green && green == blue) return "white " + describeNumber(red) + describeAlpha(alpha);
  return "rgb " + describeNumber(red) + " " + describeNumber(green) + " " + describeNumber(blue) +
         describeAlpha(alpha);
}

}  // namespace sentrel
