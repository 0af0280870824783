#include "host/PasscodeRecord.h"

#include <utility>

namespace sentrel::host {

PropertyList::Dictionary PasscodeRecord::entries() const {
  auto entries = platform_.propertyListFiles->readDictionary(passcodeRecordPath)
                     .dictionary.value_or(PropertyList::Dictionary());
  for (const auto& [key, value] : unwritten_)
    entries.insert_or_assign(key, value);
  return entries;
}

std::optional<double> PasscodeRecord::number(const std::string& key) const {
  const auto all = entries();
  const PropertyList* value = find(all, key);
  return value && value->isNumber() ? std::optional(value->doubleValue()) : std::nullopt;
}

std::optional<bool> PasscodeRecord::flag(const std::string& key) const {
  const auto all = entries();
  const bool* value = find<bool>(all, key);
  return value ? std::optional(*value) : std::nullopt;
}

void PasscodeRecord::store(const std::string& key, PropertyList value) {
  unwritten_.insert_or_assign(key, std::move(value));
  using enum DictionaryReading::Outcome;
  const auto outcome = platform_.propertyListFiles->readDictionary(passcodeRecordPath).outcome;
  if ((outcome == read || outcome == absent) &&
      platform_.propertyListFiles->writeDictionary(passcodeRecordPath, entries()))
    unwritten_.clear();
}

}  // namespace sentrel::host
