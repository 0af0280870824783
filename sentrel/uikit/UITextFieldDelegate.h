#pragma once

#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/NSRange.h"

namespace sentrel {

class UITextField;

/// Decides about a text field's editing; every operation is optional.
class SENTREL_API UITextFieldDelegate {
 public:
  virtual ~UITextFieldDelegate() = default;

  virtual bool textFieldShouldBeginEditing(UITextField& /*textField*/) { return true; }
  virtual bool textFieldShouldEndEditing(UITextField& /*textField*/) { return true; }

  /// Asked before every edit that the user makes; `range` lies inside the text.
  virtual bool textField(UITextField& /*textField*/, NSRange /*shouldChangeCharactersInRange*/,
                         const std::string& /*replacementString*/) {
    return true;
  }
};

}  // namespace sentrel
