#include "sentrel/uikit/Dump.h"

#include <utility>

#include "sentrel/uikit/Numbers.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIVisualEffectView.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {
namespace {

std::string quoted(const std::string& text) {
  return '"' + text + '"';
}

std::string numbers(std::initializer_list<double> values) {
  std::string text;
  for (const double value : values)
    text += (text.empty() ? "" : " ") + describeNumber(value);
  return '(' + text + ')';
}

const char* alignmentName(NSTextAlignment alignment) {
  switch (alignment) {
    case NSTextAlignment::left:
      return "left";
    case NSTextAlignment::center:
      return "center";
    case NSTextAlignment::right:
      return "right";
  }
  return "";
}

/// Collects one view's line.
class Line {
 public:
  explicit Line(const UIView& view) : text_(view.uiClass().name()) {
    if (view.tag() != 0) add("#" + std::to_string(view.tag()));
    const CGRect frame = view.frame();
    add(numbers({frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}));
  }

  void add(const std::string& piece) { text_ += ' ' + piece; }
  void add(const char* name, const std::string& value) { add(name + ('=' + value)); }
  void add(const char* name, double value) { add(name, describeNumber(value)); }

  template <class T>
  void addUnless(const T& usual, const T& value, const std::string& piece) {
    if (value != usual) add(piece);
  }

  /// What a text has in common, wherever it stands.
  template <class Text>
  void addTextOf(const Text& view) {
    add(quoted(view.text()));
    add("font", quoted(view.font().description()));
    addUnless(UIColor::labelColor(), view.textColor(),
              "color=" + quoted(view.textColor().description()));
    addUnless(NSTextAlignment::left, view.textAlignment(), alignmentName(view.textAlignment()));
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

void addTransform(Line& line, const CGAffineTransform& t) {
  if (!t.isIdentity()) line.add("transform=" + numbers({t.a, t.b, t.c, t.d, t.tx, t.ty}));
}

void addLayer(Line& line, const UIView& view) {
  const CALayer& layer = view.layer();
  if (layer.cornerRadius() != 0) line.add("radius", layer.cornerRadius());
  if (layer.borderWidth() != 0) {
    line.add("border", layer.borderWidth());
    const UIColor color = layer.borderColor().value_or(UIColor::blackColor());
    line.add("borderColor", quoted(color.description()));
  }
  if (layer.masksToBounds()) line.add("clips");
  for (const CAAnimation& animation : layer.animations())
    line.add("animation", animation.key);
}

void addViewProperties(Line& line, const UIView& view) {
  if (view.isHidden()) line.add("hidden");
  if (view.alpha() != 1) line.add("alpha", view.alpha());
  if (view.backgroundColor()) line.add("background", quoted(view.backgroundColor()->description()));
  if (view.autoresizingMask() != UIViewAutoresizingNone)
    line.add("autoresizing", view.autoresizingMask());
  addTransform(line, view.transform());
  addLayer(line, view);
}

void addLabel(Line& line, const UILabel& label) {
  line.addTextOf(label);
  if (label.numberOfLines() != 1) line.add("lines", label.numberOfLines());
  if (label.adjustsFontSizeToFitWidth()) line.add("fits");
  if (label.minimumScaleFactor() != 0) line.add("minimumScale", label.minimumScaleFactor());
}

void addTextField(Line& line, const UITextField& field) {
  line.addTextOf(field);
  if (field.isSecureTextEntry()) line.add("secure");
  if (field.keyboardType() != UIKeyboardType::standard)
    line.add("keyboard", static_cast<double>(field.keyboardType()));
  if (field.tintColor()) line.add("tint", quoted(field.tintColor()->description()));
  if (field.isFirstResponder()) line.add("editing");
}

void addButton(Line& line, const UIButton& button) {
  if (!button.isEnabled()) line.add("disabled");
  if (button.isHighlighted()) line.add("highlighted");
}

void addKind(Line& line, const UIView& view) {
  if (const auto* label = dynamic_cast<const UILabel*>(&view)) addLabel(line, *label);
  if (const auto* field = dynamic_cast<const UITextField*>(&view)) addTextField(line, *field);
  if (const auto* button = dynamic_cast<const UIButton*>(&view)) addButton(line, *button);
  if (const auto* effect = dynamic_cast<const UIVisualEffectView*>(&view))
    line.add("blur", static_cast<double>(effect->effect().style));
  if (const auto* image = dynamic_cast<const UIImageView*>(&view); image && image->image())
    line.add("image=" + std::to_string(image->image()->width) + "x" +
             std::to_string(image->image()->height));
  if (const auto* window = dynamic_cast<const UIWindow*>(&view))
    line.add("level", window->windowLevel());
}

void dumpInto(std::string& text, const UIView& view, std::size_t depth) {
  Line line(view);
  addKind(line, view);
  addViewProperties(line, view);
  text += std::string(2 * depth, ' ') + line.text() + '\n';
  for (const auto& subview : view.subviews())
    dumpInto(text, *subview, depth + 1);
}

}  // namespace

std::string dump(const UIView& view) {
  std::string text;
  dumpInto(text, view, 0);
  return text;
}

}  // namespace sentrel
