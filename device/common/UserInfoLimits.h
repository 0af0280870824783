#pragma once

#include <cstddef>
#include <string>

#include "sentrel/platform/MessageChannel.h"

namespace sentrel {

/// The most that a user info may hold on its way to another process, as UserInfoBounds counts,
/// which is a little more than the bus needs. Bus connections are cut by larger messages than the
/// bus allows, so this is well below what a private bus allows.
inline constexpr std::size_t maximumUserInfoSize = 8 << 20;

/// The number of dictionaries and arrays inside each other. The bus itself ends at 64 containers,
/// of which a dictionary takes three.
inline constexpr int maximumUserInfoDepth = 16;

/// What is counted for a text or a value besides its own bytes: its type, its length and padding.
inline constexpr std::size_t sizeOfUserInfoEntry = 16;

/// Keeps count while a user info is gone through. Throws Exceeded where it is out of bounds.
class UserInfoBounds {
 public:
  struct Exceeded {};

  void count(std::size_t bytes) {
    if (bytes > maximumUserInfoSize - size_) throw Exceeded();
    size_ += bytes;
  }

  /// One container deeper, for as long as this lives.
  class Level {
   public:
    explicit Level(UserInfoBounds& bounds) : bounds_(bounds) {
      if (bounds.depth_ == maximumUserInfoDepth) throw Exceeded();
      ++bounds.depth_;
    }
    ~Level() { --bounds_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    UserInfoBounds& bounds_;
  };

 private:
  std::size_t size_ = 0;
  int depth_ = 0;
};

/// Whether this can go to another process as it is: within bounds, and all of its text UTF-8
/// without a NUL, at which it would be cut off.
[[nodiscard]] bool isCarriable(const UserInfo& userInfo);
[[nodiscard]] bool isCarriableText(const std::string& text);

}  // namespace sentrel
