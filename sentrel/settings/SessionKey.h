#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// What an unlock session is asked about, without owning it: a text, or an object taken by its
/// identity. Cheap to copy; lives no longer than what it was made from.
class SessionItem {
 public:
  SessionItem(std::string_view text) noexcept : item_(text) {}
  SessionItem(const std::string& text) noexcept : item_(std::string_view(text)) {}
  SessionItem(const char* text) noexcept : item_(std::string_view(text)) {}

  /// An object that cannot leave the process.
  static SessionItem object(const void* identity) noexcept { return Object{identity, nullptr}; }

  /// A folder record: by its identity here, by its content in a message.
  static SessionItem record(const PropertyList& record) noexcept {
    return Object{&record, &record};
  }

  /// The text, or null for an object.
  const std::string_view* text() const noexcept { return std::get_if<std::string_view>(&item_); }

  /// The object's address, or null for a text.
  const void* identity() const noexcept {
    const auto* object = std::get_if<Object>(&item_);
    return object ? object->identity : nullptr;
  }

  /// The form in which a message carries an object, or null where it cannot.
  const PropertyList* wireForm() const noexcept {
    const auto* object = std::get_if<Object>(&item_);
    return object ? object->wireForm : nullptr;
  }

 private:
  struct Object {
    const void* identity;
    const PropertyList* wireForm;
  };

  SessionItem(Object object) noexcept : item_(object) {}

  std::variant<std::string_view, Object> item_;
};

/// The key under which a session is recorded: a text, or an object that it keeps alive, so that no
/// later object can take over its identity.
class SessionKey {
 public:
  SessionKey(std::string text) : key_(std::move(text)) {}
  SessionKey(std::string_view text) : key_(std::string(text)) {}
  SessionKey(const char* text) : key_(std::string(text)) {}

  /// An object that cannot leave the process.
  static SessionKey object(std::shared_ptr<const void> object) {
    return SessionKey(std::move(object));
  }

  /// A folder record made now: equal to no key made before or after it.
  static SessionKey record(PropertyList record) {
    return SessionKey(std::make_shared<const PropertyList>(std::move(record)));
  }

  SessionItem item() const noexcept {
    if (const auto* text = std::get_if<std::string>(&key_)) return *text;
    if (const auto* record = std::get_if<Record>(&key_)) return SessionItem::record(**record);
    return SessionItem::object(std::get<std::shared_ptr<const void>>(key_).get());
  }

 private:
  using Record = std::shared_ptr<const PropertyList>;

  explicit SessionKey(std::shared_ptr<const void> object) : key_(std::move(object)) {}
  explicit SessionKey(Record record) : key_(std::move(record)) {}

  std::variant<std::string, Record, std::shared_ptr<const void>> key_;
};

/// Hash and equality over keys and items alike, so that a look-up by an item copies nothing.
struct SessionKeyHash {
  using is_transparent = void;
  std::size_t operator()(const SessionItem& item) const noexcept {
    if (const auto* text = item.text()) return std::hash<std::string_view>()(*text);
    return std::hash<const void*>()(item.identity());
  }
  std::size_t operator()(const SessionKey& key) const noexcept { return (*this)(key.item()); }
};

struct SessionKeyEqual {
  using is_transparent = void;
  bool operator()(const SessionKey& a, const SessionKey& b) const noexcept {
    return (*this)(a.item(), b.item());
  }
  bool operator()(const SessionItem& a, const SessionKey& b) const noexcept {
    return (*this)(a, b.item());
  }
  bool operator()(const SessionKey& a, const SessionItem& b) const noexcept {
    return (*this)(a.item(), b);
  }
  bool operator()(const SessionItem& a, const SessionItem& b) const noexcept {
    if (a.text() && b.text()) return *a.text() == *b.text();
    return !a.text() && !b.text() && a.identity() == b.identity();
  }
};

}  // namespace sentrel
