#include "device/storage/XmlReader.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "device/storage/PropertyListLimits.h"
#include "device/storage/Utf8.h"
#include "device/storage/XmlValues.h"

namespace sentrel::storage {
namespace {

using Kind = PropertyListFault::Kind;

/// A start tag: "<name>" or, empty, "<name/>".
struct Tag {
  std::string_view name;
  bool empty = false;
};

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

class XmlReader {
 public:
  explicit XmlReader(std::string_view document) : document_(document), rest_(document) {}

  PropertyListReading run() {
    PropertyList value = false;
    if (checkCharacters() && readDocument(value)) return value;
    return fault_;
  }

 private:
  /// Every step returns whether it went well, and has set the fault when it did not.
  bool fail(std::string_view detail, Kind kind = Kind::damaged) {
    const auto passed = document_.substr(0, document_.size() - rest_.size());
    const auto breaks = std::count(passed.begin(), passed.end(), '\n');
    fault_ = {kind, detail, static_cast<std::size_t>(breaks) + 1};
    return false;
  }

  bool checkCharacters() {
    const TextQuality quality = qualityOf(document_);
    if (quality == TextQuality::notUtf8) fault_ = {Kind::notUtf8};
    if (quality == TextQuality::notForXml) fault_ = {Kind::damaged, "it holds a control character"};
    return quality == TextQuality::clean;
  }

  bool readDocument(PropertyList& value) {
    if (!skipDeclarations()) return false;
    if (startsRoot() ? !readRoot(value) : !readValue(value)) return false;
    return skipBetween() && (rest_.empty() || fail("something follows the end"));
  }

  bool startsRoot() const {
    if (!rest_.starts_with("<plist") || rest_.size() < 7) return false;
    return rest_[6] == '>' || isSpace(rest_[6]);
  }

  bool readRoot(PropertyList& value) {
    if (rest_.substr(0, rest_.find('>')).ends_with('/')) return fail("a root without a value");
    if (!skipDeclaration(">")) return false;
    if (!readValue(value) || !skipBetween()) return false;
    return skipEndTag("plist") || fail("more than one value");
  }

  bool skipDeclarations() {
    for (;;) {
      if (!skipBetween()) return false;
      if (rest_.starts_with("<?")) {
        if (!skipDeclaration("?>")) return false;
      } else if (rest_.starts_with("<!DOCTYPE")) {
        if (!skipDeclaration(">")) return false;
      } else {
        return true;
      }
    }
  }

  /// White space and comments.
  bool skipBetween() {
    for (;;) {
      while (!rest_.empty() && isSpace(rest_.front()))
        rest_.remove_prefix(1);
      if (!rest_.starts_with("<!--")) return true;
      if (!skipComment()) return false;
    }
  }

  bool skipComment() {
    rest_.remove_prefix(4);
    return skipTo("-->");
  }

  bool skipTo(std::string_view end) {
    const std::size_t found = rest_.find(end);
    if (found == rest_.npos) return fail("it ends too early");
    rest_.remove_prefix(found + end.size());
    return true;
  }

  /// A tag or declaration with quoted values. Readers differ in where it ends when its end may
  /// stand inside them, or begin with its start, so none may seem to.
  bool skipDeclaration(std::string_view end) {
    const auto inside = rest_.substr(1, rest_.find(end, 2) - 1);
    const auto quotes = std::count(inside.begin(), inside.end(), '"');
    const auto apostrophes = std::count(inside.begin(), inside.end(), '\'');
    const bool paired =
        quotes % 2 == 0 && apostrophes % 2 == 0 && (quotes == 0 || apostrophes == 0);
    if (!paired || inside.find_first_of("<[>") != inside.npos)
      return fail("a declaration that is not understood");
    rest_.remove_prefix(2);
    return skipTo(end);
  }

  /// Takes "</name>" if it comes next.
  bool skipEndTag(std::string_view name) {
    if (!rest_.starts_with("</") || !rest_.substr(2).starts_with(name)) return false;
    if (!rest_.substr(2 + name.size()).starts_with('>')) return false;
    rest_.remove_prefix(name.size() + 3);
    return true;
  }

  bool readTag(Tag& tag) {
    if (rest_.empty()) return fail("it ends too early");
    if (rest_.front() != '<') return fail("text between the elements");
    const std::size_t end = rest_.find('>');
    if (end == rest_.npos) return fail("it ends too early");
    tag.name = rest_.substr(1, end - 1);
    tag.empty = tag.name.ends_with('/');
    if (tag.empty) tag.name.remove_suffix(1);
    while (!tag.name.empty() && isSpace(tag.name.back()))
      tag.name.remove_suffix(1);
    rest_.remove_prefix(end + 1);
    return true;
  }

  bool readValue(PropertyList& value) {
    Tag tag;
    return skipBetween() && readTag(tag) && readContent(tag, value);
  }

  bool readContent(const Tag& tag, PropertyList& value) {
    const std::string_view name = tag.name;
    if (name == "string") return readString(tag, value);
    if (name == "dict") return readContainer<PropertyList::Dictionary>(tag, value);
    if (name == "array") return readContainer<PropertyList::Array>(tag, value);
    if (name == "true") return readBool(tag, value, /*flag=*/true);
    if (name == "false") return readBool(tag, value, /*flag=*/false);
    if (name == "integer") return readLeaf(tag, value, integerFromXml, "no integer of 64 bits");
    if (name == "real") return readLeaf(tag, value, realFromXml, "no real number in its range");
    if (name == "date") return readLeaf(tag, value, dateFromXml, "no date");
    if (name == "data") return readLeaf(tag, value, dataFromXml, "no data in base64");
    if (name == "key") return fail("a key out of place");
    return fail("an unknown element");
  }

  bool readString(const Tag& tag, PropertyList& value) {
    std::string text;
    if (!tag.empty && !readText(tag.name, text)) return false;
    value = std::move(text);
    return true;
  }

  bool readBool(const Tag& tag, PropertyList& value, bool flag) {
    value = flag;
    return tag.empty || skipEndTag(tag.name) || fail("a boolean with content");
  }

  template <class Content>
  bool readLeaf(const Tag& tag, PropertyList& value,
                std::optional<Content> (*read)(std::string_view), std::string_view complaint) {
    const auto text = tag.empty ? std::string_view() : rest_.substr(0, rest_.find('<'));
    auto content = read(text);
    if (!content) return fail(complaint);
    value = std::move(*content);
    rest_.remove_prefix(text.size());
    return tag.empty || skipEndTag(tag.name) || fail("an element that is not closed");
  }

  template <class Content>
  bool readContainer(const Tag& tag, PropertyList& value) {
    if (++depth_ > maximumPropertyListDepth) return fail({}, Kind::tooDeep);
    Content content;
    while (!tag.empty) {
      if (!skipBetween()) return false;
      if (skipEndTag(tag.name)) break;
      if (!readMember(content)) return false;
    }
    --depth_;
    value = std::move(content);
    return true;
  }

  bool readMember(PropertyList::Array& elements) { return readValue(elements.emplace_back(false)); }

  bool readMember(PropertyList::Dictionary& entries) {
    Tag tag;
    std::string key;
    if (!readTag(tag)) return false;
    if (tag.name != "key" || tag.empty) return fail("a value without a key");
    if (!readText(tag.name, key) || !skipBetween()) return false;
    if (rest_.starts_with("</")) return fail("a key without a value");
    return readValue(entries.insert_or_assign(std::move(key), false).first->second);
  }

  /// Up to and with the end tag; comments and character-data sections may lie in between.
  bool readText(std::string_view name, std::string& text) {
    for (;;) {
      if (!readEscaped(rest_.substr(0, rest_.find('<')), text)) return false;
      if (skipEndTag(name)) return true;
      if (rest_.starts_with("<!--") ? !skipComment() : !readCharacterData(text)) return false;
    }
  }

  bool readEscaped(std::string_view escaped, std::string& text) {
    const std::size_t size = escaped.size();
    for (;;) {
      const std::size_t plain = escaped.find('&');
      text += escaped.substr(0, plain);
      if (plain == escaped.npos) break;
      escaped.remove_prefix(plain + 1);
      const std::size_t end = std::min(escaped.find(';'), escaped.size());
      const auto character = characterFromXml(escaped.substr(0, end));
      if (!character || end == escaped.size()) return fail("an unknown escape");
      appendUtf8(text, *character);
      escaped.remove_prefix(end + 1);
    }
    rest_.remove_prefix(size);
    return true;
  }

  bool readCharacterData(std::string& text) {
    constexpr std::string_view start = "<![CDATA[";
    if (!rest_.starts_with(start)) return fail("an element that is not closed");
    rest_.remove_prefix(start.size());
    const std::string_view content = rest_;
    if (!skipTo("]]>")) return false;
    text += content.substr(0, content.size() - rest_.size() - 3);
    return true;
  }

  const std::string_view document_;
  std::string_view rest_;
  std::size_t depth_ = 0;
  PropertyListFault fault_{Kind::damaged};
};

}  // namespace

PropertyListReading readXml(std::string_view document) {
  return XmlReader(document).run();
}

}  // namespace sentrel::storage
