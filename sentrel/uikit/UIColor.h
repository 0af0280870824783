#pragma once

#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Screen.h"

namespace sentrel {

/// A colour as a value: components, or a system colour that looks different by interface style and
/// is resolved when it is painted.
class SENTREL_API UIColor {
 public:
  /// From 0 to 1 each, not multiplied by alpha.
  struct Components {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend bool operator==(const Components&, const Components&) = default;
  };

  static UIColor colorWithRed(double red, double green, double blue, double alpha);
  static UIColor colorWithWhite(double white, double alpha);

  static UIColor clearColor() { return colorWithWhite(0, 0); }
  static UIColor blackColor() { return colorWithWhite(0, 1); }
  static UIColor darkGrayColor() { return colorWithWhite(1.0 / 3, 1); }
  static UIColor grayColor() { return colorWithWhite(0.5, 1); }
  static UIColor lightGrayColor() { return colorWithWhite(2.0 / 3, 1); }
  static UIColor whiteColor() { return colorWithWhite(1, 1); }

  static UIColor labelColor() { return UIColor(System::label); }
  static UIColor secondaryLabelColor() { return UIColor(System::secondaryLabel); }
  static UIColor systemBackgroundColor() { return UIColor(System::systemBackground); }
  static UIColor systemBlueColor() { return UIColor(System::systemBlue); }

  UIColor colorWithAlphaComponent(double alpha) const;

  Components resolved(UIUserInterfaceStyle style) const noexcept;

  /// "labelColor" and the like where the colour has a name, else its components.
  std::string description() const;

  friend bool operator==(const UIColor&, const UIColor&) = default;

 private:
  enum class System { none, label, secondaryLabel, systemBackground, systemBlue };

  explicit UIColor(Components components) : components_(components) {}
  explicit UIColor(System system) : system_(system) {}

  System system_ = System::none;
  /// Of a system colour only the alpha counts: it multiplies the colour's own.
  Components components_;
};

}  // namespace sentrel
