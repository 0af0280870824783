#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "sentrel/platform/PropertyList.h"

namespace sentrel::storage {

/// Why a property list cannot be read.
struct PropertyListFault {
  enum class Kind {
    missing,
    directory,
    pipe,
    specialFile,
    unreachable,
    noPermission,
    changing,
    unreadable,
    empty,
    tooLarge,
    tooDeep,
    notUtf8,
    damaged,
    unsupportedType,
    notADictionary,
  };

  Kind kind;
  /// What exactly is wrong, where more can be said than the kind; lives for ever.
  std::string_view detail = {};
  /// The line of an XML file, counted from 1; 0 where no line can be named.
  std::size_t line = 0;
};

/// A value, or why there is none.
using PropertyListReading = std::variant<PropertyList, PropertyListFault>;

/// Whether it says nothing about what the file holds, so that a later reading may find that.
bool mayPass(const PropertyListFault& fault);

/// One clear clause for people, without the file's name: "it is damaged: ... (line 12)".
std::string describe(const PropertyListFault& fault);

}  // namespace sentrel::storage
