#include "device/storage/PropertyListFault.h"

#include "device/storage/PropertyListLimits.h"

namespace sentrel::storage {
namespace {

std::string textOfKind(PropertyListFault::Kind kind) {
  using enum PropertyListFault::Kind;
  switch (kind) {
    case missing:
      return "there is no such file";
    case directory:
      return "it is a folder, not a file";
    case pipe:
      return "it is a pipe, not a file";
    case specialFile:
      return "it is a device or a socket, not a file";
    case unreachable:
      return "its path leads nowhere";
    case noPermission:
      return "no permission to read it";
    case changing:
      return "it is being written to";
    case unreadable:
      return "it cannot be read";
    case empty:
      return "it is empty";
    case tooLarge:
      return "it is too large (more than " + std::to_string(maximumPropertyListSize) + " bytes)";
    case tooDeep:
      return "it is nested too deep (more than " + std::to_string(maximumPropertyListDepth) +
             " levels)";
    case notUtf8:
      return "it holds text that is not UTF-8";
    case damaged:
      return "it is damaged";
    case unsupportedType:
      return "it holds a value of a type that settings cannot have";
    case notADictionary:
      return "its outermost value is not a dictionary";
  }
  return "it cannot be read";
}

}  // namespace

bool mayPass(const PropertyListFault& fault) {
  using enum PropertyListFault::Kind;
  return fault.kind == noPermission || fault.kind == changing || fault.kind == unreadable;
}

std::string describe(const PropertyListFault& fault) {
  std::string text = textOfKind(fault.kind);
  if (!fault.detail.empty()) text.append(": ").append(fault.detail);
  if (fault.line > 0) text += " (line " + std::to_string(fault.line) + ")";
  return text;
}

}  // namespace sentrel::storage
