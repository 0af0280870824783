#include "sentrel/uikit/UIFont.h"

#include <utility>

#include "sentrel/uikit/Numbers.h"

namespace sentrel {

UIFont UIFont::systemFontOfSize(double size) {
  return {{"", size, false, false}};
}

UIFont UIFont::boldSystemFontOfSize(double size) {
  return {{"", size, true, false}};
}

UIFont UIFont::italicSystemFontOfSize(double size) {
  return {{"", size, false, true}};
}

UIFont UIFont::fontWithName(std::string name, double size) {
  return {{std::move(name), size, false, false}};
}

UIFont UIFont::preferredFontForTextStyle(UIFontTextStyle style) {
  switch (style) {
    case UIFontTextStyle::largeTitle:
      return systemFontOfSize(34);
    case UIFontTextStyle::title1:
      return systemFontOfSize(28);
    case UIFontTextStyle::subheadline:
      return systemFontOfSize(15);
    case UIFontTextStyle::footnote:
      return systemFontOfSize(13);
  }
  return systemFontOfSize(17);
}

std::string UIFont::description() const {
  return (name.empty() ? "system" : name) + (bold ? " bold" : "") + (italic ? " italic" : "") +
         " " + describeNumber(size);
}

}  // namespace sentrel
