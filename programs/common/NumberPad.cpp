#include "programs/common/NumberPad.h"

#include <cctype>
#include <string>
#include <vector>

#include "sentrel/uikit/UIKeyboard.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIScreen.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel::programs {
namespace {

constexpr double gap = 6;

/// Row by row; an empty key is a gap.
using Rows = std::vector<std::vector<std::string>>;

const Rows& digits() {
  static const Rows rows = {{"1", "2", "3"}, {"4", "5", "6"}, {"7", "8", "9"}, {"", "0", "⌫"}};
  return rows;
}

const Rows& letters() {
  static const Rows rows = {{"q", "w", "e", "r", "t", "y", "u", "i", "o", "p"},
                            {"a", "s", "d", "f", "g", "h", "j", "k", "l"},
                            {"⇧", "z", "x", "c", "v", "b", "n", "m", "⌫"},
                            {"123", "space", "return"}};
  return rows;
}

bool isDark() {
  return UIScreen::mainScreen().userInterfaceStyle() == UIUserInterfaceStyle::dark;
}

const UIClass& windowClass() {
  static const UIClass uiClass("UIRemoteKeyboardWindow", &UIWindow::staticClass());
  return uiClass;
}

std::shared_ptr<UILabel> makeKey(const CGRect& frame, const std::string& text) {
  auto key = std::make_shared<UILabel>(frame);
  key->setText(text);
  key->setFont(UIFont::systemFontOfSize(text.size() > 3 ? 16 : 22));
  key->setTextAlignment(NSTextAlignment::center);
  key->layer().setCornerRadius(5);
  if (std::isalnum(static_cast<unsigned char>(text.front())))
    key->setBackgroundColor(isDark() ? UIColor::colorWithWhite(1, 0.3)
                                     : UIColor::colorWithWhite(1, 0.95));
  return key;
}

void addKeys(UIView& pad, const Rows& rows) {
  const CGSize size = pad.bounds().size;
  const auto rowCount = static_cast<double>(rows.size());
  const double height = (size.height - (rowCount + 1) * gap) / rowCount;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const auto count = static_cast<double>(rows[row].size());
    const double width = (size.width - (count + 1) * gap) / count;
    for (std::size_t at = 0; at < rows[row].size(); ++at)
      if (!rows[row][at].empty())
        pad.addSubview(
            makeKey(CGRectMake(gap + static_cast<double>(at) * (width + gap),
                               gap + static_cast<double>(row) * (height + gap), width, height),
                    rows[row][at]));
  }
}

std::shared_ptr<UIWindow> makePad(CGSize screen, double height, const Rows& rows) {
  auto window = std::make_shared<UIWindow>(CGRect{{}, screen}, windowClass());
  window->setWindowLevel(UIWindowLevelAlert + 1);
  const auto pad = std::make_shared<UIVisualEffectView>(
      UIBlurEffect::effectWithStyle(isDark() ? 2 : 0),
      CGRectMake(0, screen.height - height, screen.width, height));
  addKeys(*pad, rows);
  window->addSubview(pad);
  window->setHidden(/*hidden=*/false);
  return window;
}

}  // namespace

std::shared_ptr<UIWindow> makeNumberPad(CGSize screen, double height) {
  return makePad(screen, height, digits());
}

std::shared_ptr<UIWindow> makeKeyboardFor(const std::shared_ptr<UITextField>& field,
                                          CGSize screen) {
  if (!field) return nullptr;
  const bool isNumeric = field->keyboardType() == UIKeyboardType::numberPad;
  return makePad(screen, systemKeyboardHeight(screen), isNumeric ? digits() : letters());
}

}  // namespace sentrel::programs
