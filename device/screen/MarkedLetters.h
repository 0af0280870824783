#pragma once

#include <memory>
#include <string_view>

#include "device/screen/Handles.h"

namespace sentrel::screen {

using AttributesHandle = std::unique_ptr<PangoAttrList, Releasing<pango_attr_list_unref>>;

/// What sets every letter that keeps a combining mark, once it is composed as far as it goes, in
/// the family for other scripts: the main one says for few marks where they belong, and would draw
/// the others in one place, whatever letter they are on. Null where `text`, UTF-8, has none such.
AttributesHandle attributesForMarks(std::string_view text);

}  // namespace sentrel::screen
