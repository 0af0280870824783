#include "device/bus/BusCodec.h"

#include <sdbus-c++/Message.h>

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace sentrel::bus {
namespace {

/// What is counted for a value besides its own bytes: its type, its length and padding.
constexpr std::size_t sizeOfEntry = 16;

/// Thrown inside the codec alone.
struct Refused {};

/// Keeps count while a user info is written or read.
class Bounds {
 public:
  void count(std::size_t bytes) {
    if (bytes > maximumUserInfoSize - size_) throw Refused();
    size_ += bytes;
  }

  /// One container deeper, for as long as this lives.
  class Level {
   public:
    explicit Level(Bounds& bounds) : bounds_(bounds) {
      if (bounds.depth_ == maximumUserInfoDepth) throw Refused();
      ++bounds.depth_;
    }
    ~Level() { --bounds_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Bounds& bounds_;
  };

 private:
  std::size_t size_ = 0;
  int depth_ = 0;
};

class Writer {
 public:
  explicit Writer(sdbus::Message& message) : message_(message) {}

  void write(const PropertyList::Dictionary& dictionary) {
    const Bounds::Level level(bounds_);
    message_.openContainer("{sv}");
    for (const auto& [key, value] : dictionary) {
      message_.openDictEntry("sv");
      write(key);
      writeVariant(value);
      message_.closeDictEntry();
    }
    message_.closeContainer();
  }

 private:
  void writeVariant(const PropertyList& value) {
    bounds_.count(sizeOfEntry);
    message_.openVariant(signature(value));
    std::visit([this](const auto& content) { write(content); }, value.value());
    message_.closeVariant();
  }

  static const std::string& signature(const PropertyList& value) {
    static const std::string signatures[] = {"b", "x", "d", "s", "ay", "(d)", "av", "a{sv}"};
    static_assert(std::variant_size_v<PropertyList::Value> == std::size(signatures));
    return signatures[value.value().index()];
  }

  void write(bool value) { message_ << value; }
  void write(std::int64_t value) { message_ << value; }
  void write(double value) { message_ << value; }

  void write(const std::string& text) {
    if (!isWholeText(text)) throw Refused();
    bounds_.count(text.size() + sizeOfEntry);
    message_ << text;
  }

  void write(const PropertyList::Data& data) {
    bounds_.count(data.size());
    message_ << data;
  }

  void write(PropertyList::Date date) {
    message_.openStruct("d");
    message_ << date.time_since_epoch().count();
    message_.closeStruct();
  }

  void write(const PropertyList::Array& elements) {
    const Bounds::Level level(bounds_);
    message_.openContainer("v");
    for (const PropertyList& element : elements)
      writeVariant(element);
    message_.closeContainer();
  }

  sdbus::Message& message_;
  Bounds bounds_;
};

class Reader {
 public:
  explicit Reader(sdbus::Message& message) : message_(message) {}

  UserInfo readUserInfo() {
    UserInfo userInfo;
    if (!message_.enterContainer("a{sv}")) throw Refused();
    if (!isAtEnd()) userInfo = readDictionary();
    message_.exitContainer();
    if (!isAtEnd()) throw Refused();
    return userInfo;
  }

 private:
  PropertyList::Dictionary readDictionary() {
    const Bounds::Level level(bounds_);
    PropertyList::Dictionary dictionary;
    message_.enterContainer("{sv}");
    while (message_.enterDictEntry("sv")) {
      std::string key = readText();
      dictionary.insert_or_assign(std::move(key), readVariant());
      message_.exitDictEntry();
    }
    message_.clearFlags();
    message_.exitContainer();
    return dictionary;
  }

  PropertyList readVariant() {
    bounds_.count(sizeOfEntry);
    const std::string contents = nextContents();
    message_.enterVariant(contents);
    PropertyList value = readValue(contents);
    message_.exitVariant();
    return value;
  }

  PropertyList readValue(const std::string& signature) {
    if (signature == "b") return readPlain<bool>();
    if (signature == "x") return readPlain<std::int64_t>();
    if (signature == "d") return readPlain<double>();
    if (signature == "s") return readText();
    if (signature == "ay") return readData();
    if (signature == "(d)") return readDate();
    if (signature == "av") return readArray();
    if (signature == "a{sv}") return readDictionary();
    throw Refused();
  }

  template <class T>
  T readPlain() {
    T value{};
    message_ >> value;
    return value;
  }

  std::string readText() {
    std::string text = readPlain<std::string>();
    bounds_.count(text.size() + sizeOfEntry);
    return text;
  }

  PropertyList::Data readData() {
    PropertyList::Data data = readPlain<PropertyList::Data>();
    bounds_.count(data.size());
    return data;
  }

  PropertyList::Date readDate() {
    message_.enterStruct("d");
    const PropertyList::Date date{Seconds(readPlain<double>())};
    message_.exitStruct();
    return date;
  }

  PropertyList::Array readArray() {
    const Bounds::Level level(bounds_);
    PropertyList::Array elements;
    message_.enterContainer("v");
    while (!isAtEnd())
      elements.push_back(readVariant());
    message_.exitContainer();
    return elements;
  }

  /// The signature inside the variant that comes next.
  std::string nextContents() {
    std::string type;
    std::string contents;
    message_.peekType(type, contents);
    return contents;
  }

  bool isAtEnd() {
    std::string type;
    std::string contents;
    message_.peekType(type, contents);
    return type.empty() || type.front() == '\0';
  }

  sdbus::Message& message_;
  Bounds bounds_;
};

}  // namespace

bool isWholeText(const std::string& text) {
  return text.find('\0') == std::string::npos;
}

bool appendUserInfo(sdbus::Message& message, const UserInfo& userInfo) {
  try {
    message.openContainer("a{sv}");
    if (userInfo) Writer(message).write(*userInfo);
    message.closeContainer();
    return true;
  } catch (const Refused&) {
    return false;
  } catch (const sdbus::Error&) {
    return false;  // text that is no UTF-8
  }
}

std::optional<UserInfo> readUserInfo(sdbus::Message& message) {
  try {
    return Reader(message).readUserInfo();
  } catch (const Refused&) {
    return std::nullopt;
  } catch (const sdbus::Error&) {
    return std::nullopt;  // not of the type that was looked for
  }
}

}  // namespace sentrel::bus
