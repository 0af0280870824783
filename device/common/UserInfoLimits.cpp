#include "device/common/UserInfoLimits.h"

#include <variant>

#include "sentrel/platform/Utf8.h"

namespace sentrel {
namespace {

class Walk {
 public:
  /// False at the first text that cannot go.
  bool visit(const PropertyList::Dictionary& dictionary) {
    const UserInfoBounds::Level level(bounds_);
    for (const auto& [key, value] : dictionary)
      if (!visit(key) || !visitValue(value)) return false;
    return true;
  }

 private:
  bool visitValue(const PropertyList& value) {
    bounds_.count(sizeOfUserInfoEntry);
    return value.visit([this](const auto& content) { return visit(content); });
  }

  bool visit(const std::string& text) {
    bounds_.count(text.size() + sizeOfUserInfoEntry);
    return isCarriableText(text);
  }

  bool visit(const PropertyList::Data& data) {
    bounds_.count(data.size());
    return true;
  }

  bool visit(const PropertyList::Array& elements) {
    const UserInfoBounds::Level level(bounds_);
    for (const PropertyList& element : elements)
      if (!visitValue(element)) return false;
    return true;
  }

  bool visit(bool) { return true; }
  bool visit(std::int64_t) { return true; }
  bool visit(std::uint64_t) { return true; }
  bool visit(double) { return true; }
  bool visit(PropertyList::Date) { return true; }

  UserInfoBounds bounds_;
};

}  // namespace

bool isCarriable(const UserInfo& userInfo) {
  try {
    return !userInfo || Walk().visit(*userInfo);
  } catch (const UserInfoBounds::Exceeded&) {
    return false;
  }
}

bool isCarriableText(const std::string& text) {
  return text.find('\0') == std::string::npos && isUtf8(text);
}

}  // namespace sentrel
