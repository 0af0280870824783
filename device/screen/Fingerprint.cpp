#include "device/screen/Fingerprint.h"

#include <functional>
#include <initializer_list>
#include <string_view>

#include "sentrel/uikit/PKGlyphView.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIVisualEffectView.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::screen {
namespace {

class Fingerprint {
 public:
  void add(std::initializer_list<double> numbers) {
    for (const double number : numbers)
      mix(std::hash<double>()(number));
  }
  void add(std::string_view text) { mix(std::hash<std::string_view>()(text)); }
  void add(const void* object) { mix(std::hash<const void*>()(object)); }

  /// As it looks in either style; the style is not the view's.
  void add(const UIColor& color) {
    for (const auto style : {UIUserInterfaceStyle::light, UIUserInterfaceStyle::dark}) {
      const UIColor::Components c = color.resolved(style);
      add({c.red, c.green, c.blue, c.alpha});
    }
  }
  void add(const std::optional<UIColor>& color) {
    add({color ? 1.0 : 0.0});
    if (color) add(*color);
  }

  std::size_t value() const noexcept { return value_; }

 private:
  void mix(std::size_t piece) { value_ = (value_ ^ piece) * 0x9E3779B97F4A7C15U + 1; }

  std::size_t value_ = 0;
};

template <class Text>
void addText(Fingerprint& print, const Text& view, std::string_view text) {
  print.add(text);
  print.add({view.font().size, double(view.font().bold), double(view.font().italic),
             double(view.textAlignment())});
  print.add(view.textColor());
}

void addKind(Fingerprint& print, const UIView& view) {
  if (const auto* label = dynamic_cast<const UILabel*>(&view)) {
    addText(print, *label, label->text());
    print.add({double(label->numberOfLines()), double(label->lineBreakMode()),
               double(label->adjustsFontSizeToFitWidth()), label->minimumScaleFactor()});
  } else if (const auto* field = dynamic_cast<const UITextField*>(&view)) {
    addText(print, *field, field->displayedText());
    print.add({double(field->selectedRange().location), double(field->isFirstResponder())});
    print.add(field->tintColor());
  } else if (const auto* button = dynamic_cast<const UIButton*>(&view)) {
    print.add({double(button->isHighlighted()), double(button->isEnabled())});
  } else if (const auto* image = dynamic_cast<const UIImageView*>(&view)) {
    print.add(image->image().get());
  } else if (const auto* effect = dynamic_cast<const UIVisualEffectView*>(&view)) {
    print.add({double(effect->effect().style)});
  } else if (const auto* glyph = dynamic_cast<const PKGlyphView*>(&view)) {
    print.add({double(glyph->state())});
    print.add(glyph->primaryColor());
  }
}

void addLooks(Fingerprint& print, const UIView& view) {
  const CGAffineTransform& t = view.transform();
  const CGRect bounds = view.bounds();
  print.add({view.center().x, view.center().y, bounds.origin.x, bounds.origin.y, bounds.size.width,
             bounds.size.height, t.a, t.b, t.c, t.d, t.tx, t.ty, view.alpha(),
             view.layer().cornerRadius(), view.layer().borderWidth(),
             double(view.clipsToBounds())});
  print.add(view.backgroundColor());
  print.add(view.layer().borderColor());
}

void addTree(Fingerprint& print, const UIView& view) {
  print.add({double(view.isHidden())});
  if (view.isHidden()) return;
  addLooks(print, view);
  addKind(print, view);
  print.add({double(view.subviews().size())});
  for (const auto& subview : view.subviews())
    addTree(print, *subview);
}

bool isTreeAnimating(const UIView& view) {
  if (view.isHidden()) return false;
  if (!view.layer().animations().empty()) return true;
  for (const auto& subview : view.subviews())
    if (isTreeAnimating(*subview)) return true;
  return false;
}

}  // namespace

std::size_t fingerprintOf(const UIApplication& application) {
  Fingerprint print;
  for (const auto& window : application.windows())
    addTree(print, *window);
  return print.value();
}

bool isAnimating(const UIApplication& application) {
  for (const auto& window : application.windows())
    if (isTreeAnimating(*window)) return true;
  return false;
}

}  // namespace sentrel::screen
