#include "device/simulated/HomeScreenLayout.h"

#include <optional>
#include <string>
#include <vector>

namespace sentrel::simulated {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

constexpr const char* iconStateFile = "/var/mobile/Library/SpringBoard/IconState.plist";

/// The items of all pages of the home screen or of a folder.
Array itemsOfPages(RootPropertyLists& files, const std::string& place, const Dictionary& entries) {
  Array items;
  for (const PropertyList& page : files.list(place, entries, "iconLists")) {
    if (const auto* more = page.as<Array>())
      items.insert(items.end(), more->begin(), more->end());
    else
      files.complain(place, describe(page) + " in iconLists is no page");
  }
  return items;
}

void placeFolder(RootPropertyLists& files, SimulatedHomeScreen& homeScreen,
                 const Dictionary& folder) {
  const std::string* name = files.text(iconStateFile, folder, "displayName");
  const std::string place =
      std::string(iconStateFile) + ": folder " + (name ? "\"" + *name + "\"" : "without a name");
  std::vector<std::string> identifiers;
  for (const PropertyList& item : itemsOfPages(files, place, folder)) {
    if (const auto* identifier = item.as<std::string>())
      identifiers.push_back(*identifier);
    else if (item.as<Dictionary>())
      files.complain(place, "a folder in it is left out with its applications: " + describe(item));
    else
      files.complain(place, describe(item) + " is no application");
  }
  homeScreen.addFolder(name ? std::optional(*name) : std::nullopt, identifiers);
}

/// An application is a text, a folder a dictionary with a name and pages of applications.
void place(RootPropertyLists& files, SimulatedHomeScreen& homeScreen, const PropertyList& item) {
  if (const auto* identifier = item.as<std::string>())
    return homeScreen.addApplication(*identifier);
  const auto* folder = item.as<Dictionary>();
  if (folder && find<Array>(*folder, "iconLists")) return placeFolder(files, homeScreen, *folder);
  files.complain(iconStateFile, describe(item) + " is neither an application nor a folder");
}

}  // namespace

void layOutHomeScreen(RootPropertyLists& files, SimulatedHomeScreen& homeScreen) {
  const auto state = files.read(iconStateFile);
  if (!state) return;
  homeScreen.clear();
  for (const PropertyList& item : files.list(iconStateFile, *state, "buttonBar"))
    place(files, homeScreen, item);
  homeScreen.setDockCount(homeScreen.root().icons().size());
  for (const PropertyList& item : itemsOfPages(files, iconStateFile, *state))
    place(files, homeScreen, item);
}

}  // namespace sentrel::simulated
