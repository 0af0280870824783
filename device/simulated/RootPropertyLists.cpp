#include "device/simulated/RootPropertyLists.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "device/storage/PlistFiles.h"

namespace sentrel::simulated {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

std::optional<Dictionary> RootPropertyLists::read(const std::string& path, Missing missing) {
  auto reading = storage::readDictionaryFile(root_.hostPath(path).value_or(""));
  if (auto* dictionary = std::get_if<Dictionary>(&reading)) return std::move(*dictionary);
  const auto& fault = std::get<storage::PropertyListFault>(reading);
  if (storage::mayPass(fault))
    missOut(path, storage::describe(fault));
  else if (fault.kind != storage::PropertyListFault::Kind::missing || missing == Missing::isAFault)
    complain(path, storage::describe(fault));
  return std::nullopt;
}

Array RootPropertyLists::list(const std::string& place, const Dictionary& entries,
                              std::string_view key) {
  const PropertyList* entry = find(entries, key);
  if (!entry) return {};
  if (const auto* list = entry->as<Array>()) return *list;
  complain(place, std::string(key) + " is no list");
  return {};
}

std::vector<std::string> RootPropertyLists::texts(const std::string& place,
                                                  const Dictionary& entries, std::string_view key) {
  std::vector<std::string> texts;
  for (const PropertyList& item : list(place, entries, key)) {
    if (const auto* text = item.as<std::string>())
      texts.push_back(*text);
    else
      complain(place, describe(item) + " in " + std::string(key) + " is no text");
  }
  return texts;
}

const std::string* RootPropertyLists::text(const std::string& place, const Dictionary& entries,
                                           std::string_view key) {
  const PropertyList* value = find(entries, key);
  if (value && !value->as<std::string>())
    complain(place, std::string(key) + " is no text: " + describe(*value));
  return textUnder(entries, key);
}

const PropertyList* RootPropertyLists::number(const std::string& place, const Dictionary& entries,
                                              std::string_view key, const char* what) {
  const PropertyList* value = find(entries, key);
  if (!value || value->isNumber()) return value;
  complain(place, std::string(key) + " is no " + what + ": " + describe(*value));
  return nullptr;
}

bool RootPropertyLists::isFolder(const std::string& path) const {
  std::error_code error;
  return std::filesystem::is_directory(root_.hostPath(path).value_or(""), error);
}

std::optional<std::string> RootPropertyLists::hostFile(const std::string& path) const {
  auto host = root_.hostPath(path);
  std::error_code error;
  return host && std::filesystem::is_regular_file(*host, error) ? host : std::nullopt;
}

std::vector<std::string> RootPropertyLists::foldersIn(const std::string& path) {
  std::vector<std::string> names;
  std::error_code error;
  const std::string folder = root_.hostPath(path).value_or("");
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    if (entry->is_directory(error)) names.push_back(entry->path().filename().string());
  if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory)
    missOut(path, "its folders cannot be listed: " + error.message());
  std::ranges::sort(names);
  return names;
}

void RootPropertyLists::missOut(const std::string& place, const std::string& fault) {
  isComplete_ = false;
  complain(place, fault);
}

void RootPropertyLists::complain(const std::string& place, const std::string& fault) {
  std::string line = place + ": " + fault;
  // What the files hold may be quoted in it, and it is to stay one line.
  std::ranges::replace_if(
      line, [](unsigned char c) { return c < ' ' || c == '\x7f'; }, '?');
  complaints_.push_back(std::move(line));
}

const std::string* textUnder(const Dictionary& entries, std::string_view key) {
  const auto* text = find<std::string>(entries, key);
  return text && !text->empty() ? text : nullptr;
}

}  // namespace sentrel::simulated
