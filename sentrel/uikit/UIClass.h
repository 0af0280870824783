#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// A view class as the running system knows it, so that there can be views of classes of which
/// nothing but the name is known. Made once, kept for good; its superclass outlives it.
///
/// A name stands for one class in a process, so classes of one name are the same class.
class SENTREL_API UIClass {
 public:
  UIClass(std::string name, const UIClass* superclass)
      : name_(std::move(name)), superclass_(superclass) {}
  UIClass(const UIClass&) = delete;
  UIClass& operator=(const UIClass&) = delete;

  const std::string& name() const noexcept { return name_; }
  const UIClass* superclass() const noexcept { return superclass_; }

  /// Whether this is the class of that name or inherits from it.
  bool isSubclassOfClassNamed(std::string_view name) const noexcept {
    for (const UIClass* each = this; each; each = each->superclass_)
      if (each->name_ == name) return true;
    return false;
  }

 private:
  std::string name_;
  const UIClass* superclass_;
};

}  // namespace sentrel
