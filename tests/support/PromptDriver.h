#pragma once

#include "programs/common/Hands.h"

namespace sentrel {

using programs::focusedField;
using programs::tapButton;
using programs::type;
using programs::visibleButton;

}  // namespace sentrel
