#include "device/storage/PlistFiles.h"

#include <chrono>
#include <new>
#include <utility>

#include "device/storage/DurableWrite.h"
#include "device/storage/FileReading.h"
#include "device/storage/FolderLock.h"
#include "device/storage/PropertyListCoding.h"
#include "device/storage/SpareDescriptor.h"

namespace sentrel::storage {
namespace {

using Outcome = DictionaryReading::Outcome;

DictionaryFileReading parseDictionary(std::string_view content) {
  auto reading = parsePropertyList(content);
  if (const auto* fault = std::get_if<PropertyListFault>(&reading)) return *fault;
  auto* root = std::get<PropertyList>(reading).as<PropertyList::Dictionary>();
  if (!root) return PropertyListFault{PropertyListFault::Kind::notADictionary};
  return std::move(*root);
}

DictionaryFileReading tryToRead(const std::string& hostPath) {
  try {
    const auto content = readWholeFile(hostPath);
    if (const auto* fault = std::get_if<PropertyListFault>(&content)) return *fault;
    return parseDictionary(std::get<std::string>(content));
  } catch (const std::bad_alloc&) {
    return PropertyListFault{PropertyListFault::Kind::unreadable, "there is no memory left"};
  }
}

Outcome outcomeOf(const PropertyListFault& fault) {
  if (mayPass(fault)) return Outcome::couldNot;
  return fault.kind == PropertyListFault::Kind::missing ? Outcome::absent : Outcome::damaged;
}

}  // namespace

DictionaryFileReading readDictionaryFile(const std::string& hostPath) {
  auto reading = tryToRead(hostPath);
  const auto* fault = std::get_if<PropertyListFault>(&reading);
  if (!fault || !mayPass(*fault)) return reading;
  const SpareDescriptor::Loan room(SpareDescriptor::ofProcess());
  return tryToRead(hostPath);
}

/// Declared in this order, the folder is let go of first.
class PlistFiles::HeldLock final : public Lock {
 public:
  HeldLock(std::unique_lock<std::recursive_timed_mutex> thread, std::shared_ptr<FolderLock> folder)
      : thread_(std::move(thread)), folder_(std::move(folder)) {}

 private:
  std::unique_lock<std::recursive_timed_mutex> thread_;
  std::shared_ptr<FolderLock> folder_;
};

PlistFiles::PlistFiles(DeviceRoot root, Seconds patience)
    : root_(std::move(root)), patience_(patience) {
  SpareDescriptor::ofProcess();  // while there still is one
}

DictionaryReading PlistFiles::readDictionary(const std::string& path) const {
  const auto hostPath = root_.hostPath(path);
  if (!hostPath) return Outcome::absent;
  auto reading = readDictionaryFile(*hostPath);
  if (const auto* fault = std::get_if<PropertyListFault>(&reading)) return outcomeOf(*fault);
  return std::get<PropertyList::Dictionary>(std::move(reading));
}

bool PlistFiles::writeDictionary(const std::string& path,
                                 const PropertyList::Dictionary& dictionary) {
  const auto content = serializePropertyList(dictionary);
  const auto alone = content ? lock(path) : nullptr;
  return alone && writeDurably(*root_.hostPath(path), *content);
}

std::unique_ptr<PropertyListFiles::Lock> PlistFiles::lock(const std::string& path) {
  using std::chrono::steady_clock;
  const auto deadline =
      steady_clock::now() + std::chrono::duration_cast<steady_clock::duration>(patience_);
  const auto hostPath = root_.hostPath(path);
  const auto target = hostPath ? targetOf(*hostPath) : std::nullopt;
  std::unique_lock thread(mutex_, deadline);
  if (!target || !thread) return nullptr;
  const std::string name = folderOf(*target);
  auto& held = held_[name];
  auto folder = held.lock();
  if (!folder) held = folder = FolderLock::take(name, deadline);
  if (!folder) return nullptr;
  return std::make_unique<HeldLock>(std::move(thread), std::move(folder));
}

}  // namespace sentrel::storage
