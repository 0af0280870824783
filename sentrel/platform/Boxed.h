#pragma once

#include <memory>
#include <utility>

namespace sentrel {

/// A container on the heap that copies as the container does, and is as small as a pointer. An
/// empty one takes no room there.
template <class Content>
class Boxed {
 public:
  Boxed(Content content)
      : content_(content.empty() ? nullptr : std::make_unique<Content>(std::move(content))) {}
  Boxed(const Boxed& other) : Boxed(other.content()) {}
  Boxed(Boxed&& other) noexcept = default;
  Boxed& operator=(const Boxed& other) { return *this = Boxed(other); }
  Boxed& operator=(Boxed&& other) noexcept = default;

  const Content& content() const noexcept {
    static const Content empty;
    return content_ ? *content_ : empty;
  }

  /// To be changed: takes room also for what is empty.
  Content& content() {
    if (!content_) content_ = std::make_unique<Content>();
    return *content_;
  }

  friend bool operator==(const Boxed& a, const Boxed& b) { return a.content() == b.content(); }

 private:
  std::unique_ptr<Content> content_;
};

}  // namespace sentrel
