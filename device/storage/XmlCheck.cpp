#include "device/storage/XmlCheck.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "device/storage/PropertyListLimits.h"
#include "device/storage/Utf8.h"
#include "device/storage/XmlValues.h"

namespace sentrel::storage {
namespace {

using Kind = PropertyListFault::Kind;

/// A leaf element, and what its text must be; no condition for those with free text.
struct Leaf {
  std::string_view name;
  bool (*accepts)(std::string_view);
  std::string_view complaint;
};

constexpr Leaf freeTextLeaves[] = {{"string", nullptr, {}}, {"key", nullptr, {}}};

constexpr Leaf valueLeaves[] = {
    {"integer", isIntegerText, "an integer that is none or does not fit 64 bits"},
    {"real", isRealText, "a real that is no number or out of range"},
    {"date", isDateText, "a date that is none"},
    {"data", isDataText, "data that is not base64"},
};

/// What may come next inside an open element.
enum class Expects { anyValue, oneValue, nothing, key, entry };

struct Open {
  std::string_view name;
  Expects expects;
};

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back()))
    text.remove_suffix(1);
  return text;
}

class XmlCheck {
 public:
  explicit XmlCheck(std::string_view document) : document_(document), rest_(document) {}

  std::optional<PropertyListFault> run() {
    const bool good = checkCharacters() && checkElements();
    if (good) return std::nullopt;
    return fault_;
  }

 private:
  bool fail(std::string_view detail, Kind kind = Kind::damaged) {
    const auto passed = document_.substr(0, document_.size() - rest_.size());
    const auto breaks = std::count(passed.begin(), passed.end(), '\n');
    fault_ = {kind, detail, static_cast<std::size_t>(breaks) + 1};
    return false;
  }

  bool checkCharacters() {
    switch (qualityOf(document_)) {
      case TextQuality::clean:
        return true;
      case TextQuality::notForXml:
        fault_ = {Kind::damaged, "a control character"};
        return false;
      case TextQuality::notUtf8:
        fault_ = {Kind::notUtf8};
        return false;
    }
    return false;
  }

  bool checkElements() {
    open_.reserve(16);
    open_.push_back({{}, Expects::oneValue});
    for (;;) {
      while (!rest_.empty() && isSpace(rest_.front()))
        rest_.remove_prefix(1);
      if (rest_.empty()) break;
      if (rest_.front() != '<') return fail("text between the elements");
      if (!checkMarkup()) return false;
    }
    if (open_.size() > 1) return fail("it ends too early");
    return open_.back().expects == Expects::nothing || fail("there is no value in it");
  }

  bool checkMarkup() {
    if (rest_.starts_with("<!--")) return skipTo("-->");
    if (rest_.starts_with("</")) return closeContainer();
    if (rest_.starts_with("<?")) return checkProlog("?>");
    if (rest_.starts_with("<!DOCTYPE")) return checkProlog(">");
    if (rest_.starts_with("<plist")) return openRoot();
    return checkElement();
  }

  bool skipTo(std::string_view end) {
    const std::size_t found = rest_.find(end);
    if (found == rest_.npos) return fail("it ends too early");
    rest_.remove_prefix(found + end.size());
    return true;
  }

  /// Declarations stand before the first element only.
  bool checkProlog(std::string_view end) {
    const bool early = open_.size() == 1 && open_.back().expects == Expects::oneValue;
    return early ? skipDeclaration(end) : fail("a declaration inside the list");
  }

  /// A reader that heeds quotation marks and one that does not must find the same end.
  bool skipDeclaration(std::string_view end) {
    const auto inside = rest_.substr(1, rest_.find(end) - 1);
    const auto quotes = std::count(inside.begin(), inside.end(), '"');
    const auto apostrophes = std::count(inside.begin(), inside.end(), '\'');
    const bool paired = quotes % 2 == 0 && apostrophes % 2 == 0;
    if (!paired || (quotes > 0 && apostrophes > 0) || inside.find_first_of("<[") != inside.npos)
      return fail("a declaration that is not understood");
    return skipTo(end);
  }

  bool openRoot() {
    const bool early = open_.size() == 1 && open_.back().expects == Expects::oneValue;
    if (!early) return fail("more than one list");
    open_.back().expects = Expects::nothing;
    open_.push_back({"plist", Expects::oneValue});
    const auto tag = rest_.substr(0, rest_.find('>'));
    const bool named = tag.size() > 6 ? isSpace(tag[6]) : true;
    if (!named || tag.ends_with('/')) return fail("an unknown element");
    return skipDeclaration(">");
  }

  bool checkElement() {
    const std::size_t end = rest_.find('>');
    if (end == rest_.npos) return fail("it ends too early");
    std::string_view name = rest_.substr(1, end - 1);
    const bool empty = name.ends_with('/');
    if (empty) name.remove_suffix(1);
    name = name.substr(0, name.find_last_not_of(" \t\r\n") + 1);
    if (!placeElement(name == "key")) return false;
    if (name == "dict" || name == "array") return openContainer(name, end, empty);
    return checkLeaf(name, end, empty);
  }

  /// Whether a key or a value may stand here.
  bool placeElement(bool isKey) {
    Expects& expects = open_.back().expects;
    if ((expects == Expects::key) != isKey)
      return fail(isKey ? "a key out of place" : "a value without a key");
    switch (expects) {
      case Expects::nothing:
        return fail("more than one value");
      case Expects::key:
        expects = Expects::entry;
        break;
      case Expects::entry:
        expects = Expects::key;
        break;
      case Expects::oneValue:
        expects = Expects::nothing;
        break;
      case Expects::anyValue:
        break;
    }
    return true;
  }

  bool openContainer(std::string_view name, std::size_t end, bool empty) {
    // The document and its plist element stand at the bottom.
    if (open_.size() >= maximumPropertyListDepth + 2) return fail({}, Kind::tooDeep);
    rest_.remove_prefix(end + 1);
    if (!empty) open_.push_back({name, name == "dict" ? Expects::key : Expects::anyValue});
    return true;
  }

  bool closeContainer() {
    const Open& last = open_.back();
    if (last.expects == Expects::entry) return fail("a key without a value");
    if (last.expects == Expects::oneValue) return fail("there is no value in it");
    if (!skipEndTag(last.name)) return fail("an end tag that does not belong here");
    open_.pop_back();
    return true;
  }

  /// Takes "</name>".
  bool skipEndTag(std::string_view name) {
    const bool present = rest_.starts_with("</") && rest_.substr(2).starts_with(name) &&
                         rest_.substr(2 + name.size()).starts_with('>');
    if (present) rest_.remove_prefix(name.size() + 3);
    return present && !name.empty();
  }

  bool checkLeaf(std::string_view name, std::size_t end, bool empty) {
    for (const Leaf& leaf : freeTextLeaves)
      if (name == leaf.name) return checkFreeText(name, end, empty);
    const bool flag = name == "true" || name == "false";
    if (flag || (empty && name == "data")) {
      rest_.remove_prefix(end + 1);
      return empty || skipEndTag(name) || fail("a boolean with content");
    }
    for (const Leaf& leaf : valueLeaves)
      if (name == leaf.name) return checkValue(leaf, end, empty);
    return fail("an unknown element");
  }

  bool checkValue(const Leaf& leaf, std::size_t end, bool empty) {
    const auto text = rest_.substr(end + 1, rest_.find('<', end) - end - 1);
    if (empty || !leaf.accepts(leaf.accepts == isDataText ? text : trimmed(text)))
      return fail(leaf.complaint);
    rest_.remove_prefix(end + 1 + text.size());
    return skipEndTag(leaf.name) || fail("an element that is not closed");
  }

  bool checkFreeText(std::string_view name, std::size_t end, bool empty) {
    if (empty && name == "key") return fail("a key without text");
    rest_.remove_prefix(end + 1);
    if (empty) return true;
    const std::size_t size = rest_.size();
    std::uint64_t escapes = 0;
    for (;;) {
      const auto text = rest_.substr(0, rest_.find('<'));
      if (!countEscapes(text, escapes)) return false;
      rest_.remove_prefix(text.size());
      const std::size_t passed = size - rest_.size();
      if (skipEndTag(name)) return chargeEscapes(escapes * passed);
      if (rest_.starts_with("<!--") ? !skipTo("-->") : !skipCharacterData()) return false;
    }
  }

  bool skipCharacterData() {
    if (!rest_.starts_with("<![CDATA[")) return fail("an element that is not closed");
    return skipTo("]]>");
  }

  bool countEscapes(std::string_view text, std::uint64_t& count) {
    for (;;) {
      const std::size_t start = text.find('&');
      if (start == text.npos) return true;
      text.remove_prefix(start + 1);
      const std::size_t end = text.find(';');
      if (end == text.npos || !isEntity(text.substr(0, end))) return fail("an unknown escape");
      ++count;
    }
  }

  bool chargeEscapes(std::uint64_t work) {
    escapeWork_ += work;
    return escapeWork_ <= maximumEscapeWork || fail("too many escapes in one text", Kind::tooLarge);
  }

  const std::string_view document_;
  std::string_view rest_;
  std::vector<Open> open_;
  std::uint64_t escapeWork_ = 0;
  PropertyListFault fault_{Kind::damaged};
};

}  // namespace

std::optional<PropertyListFault> checkXml(std::string_view document) {
  return XmlCheck(document).run();
}

}  // namespace sentrel::storage
