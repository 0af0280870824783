#include "device/bus/BusCodec.h"

#include <sdbus-c++/Message.h>

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

#include "device/common/UserInfoLimits.h"

namespace sentrel::bus {
namespace {

/// Thrown inside the codec alone, for what is no user info.
struct Refused {};

/// Of what has been found carriable.
class Writer {
 public:
  explicit Writer(sdbus::Message& message) : message_(message) {}

  void write(const PropertyList::Dictionary& dictionary) {
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
    message_.openVariant(value.visit([](const auto& content) { return signatureOf(content); }));
    value.visit([this](const auto& content) { write(content); });
    message_.closeVariant();
  }

  static const char* signatureOf(bool) { return "b"; }
  static const char* signatureOf(std::int64_t) { return "x"; }
  static const char* signatureOf(std::uint64_t) { return "t"; }
  static const char* signatureOf(double) { return "d"; }
  static const char* signatureOf(const std::string&) { return "s"; }
  static const char* signatureOf(const PropertyList::Data&) { return "ay"; }
  static const char* signatureOf(PropertyList::Date) { return "(d)"; }
  static const char* signatureOf(const PropertyList::Array&) { return "av"; }
  static const char* signatureOf(const PropertyList::Dictionary&) { return "a{sv}"; }

  void write(bool value) { message_ << value; }
  void write(std::int64_t value) { message_ << value; }
  void write(std::uint64_t value) { message_ << value; }
  void write(double value) { message_ << value; }

  void write(const std::string& text) { message_ << text; }
  void write(const PropertyList::Data& data) { message_ << data; }

  void write(PropertyList::Date date) {
    message_.openStruct("d");
    message_ << date.time_since_epoch().count();
    message_.closeStruct();
  }

  void write(const PropertyList::Array& elements) {
    message_.openContainer("v");
    for (const PropertyList& element : elements)
      writeVariant(element);
    message_.closeContainer();
  }

  sdbus::Message& message_;
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
    const UserInfoBounds::Level level(bounds_);
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
    bounds_.count(sizeOfUserInfoEntry);
    const std::string contents = nextContents();
    message_.enterVariant(contents);
    PropertyList value = readValue(contents);
    message_.exitVariant();
    return value;
  }

  PropertyList readValue(const std::string& signature) {
    if (signature == "b") return readPlain<bool>();
    if (signature == "x") return readPlain<std::int64_t>();
    if (signature == "t") return readPlain<std::uint64_t>();
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
    bounds_.count(text.size() + sizeOfUserInfoEntry);
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
    const UserInfoBounds::Level level(bounds_);
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
  UserInfoBounds bounds_;
};

}  // namespace

bool appendUserInfo(sdbus::Message& message, const UserInfo& userInfo) {
  if (!isCarriable(userInfo)) return false;
  try {
    message.openContainer("a{sv}");
    if (userInfo) Writer(message).write(*userInfo);
    message.closeContainer();
    return true;
  } catch (const sdbus::Error&) {
    return false;  // a character that the bus does not take
  }
}

std::optional<UserInfo> readUserInfo(sdbus::Message& message) {
  try {
    return Reader(message).readUserInfo();
  } catch (const UserInfoBounds::Exceeded&) {
    return std::nullopt;
  } catch (const Refused&) {
    return std::nullopt;
  } catch (const sdbus::Error&) {
    return std::nullopt;  // not of the type that was looked for
  }
}

}  // namespace sentrel::bus
