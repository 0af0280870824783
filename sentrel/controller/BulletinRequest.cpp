#include "sentrel/controller/BulletinRequest.h"

#include <memory>

namespace sentrel {
namespace {

constexpr const char* feedIndexKey = "sn__FeedIndex";
constexpr const char* protectedKey = "sn__Protected";

/// What a number that was never set reads as is 0, and NO.
template <class Number>
Number numberUnder(const AssociatedObjects& object, const char* key) {
  const auto number = object.associatedObject<Number>(key);
  return number ? *number : Number();
}

}  // namespace

std::uint64_t sn__FeedIndex(const AssociatedObjects& request) {
  return numberUnder<std::uint64_t>(request, feedIndexKey);
}

void setSn__FeedIndex(AssociatedObjects& request, std::uint64_t value) {
  request.setAssociatedObject(feedIndexKey, std::make_shared<std::uint64_t>(value));
}

bool sn__Protected(const AssociatedObjects& request) {
  return numberUnder<bool>(request, protectedKey);
}

void setSn__Protected(AssociatedObjects& request, bool value) {
  request.setAssociatedObject(protectedKey, std::make_shared<bool>(value));
}

}  // namespace sentrel
