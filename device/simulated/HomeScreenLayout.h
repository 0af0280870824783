#pragma once

#include "device/simulated/RootPropertyLists.h"
#include "device/simulated/SimulatedHomeScreen.h"

namespace sentrel::simulated {

/// Lays the home screen out as the file of its icons says; where there is none, it stays as it is.
void layOutHomeScreen(RootPropertyLists& files, SimulatedHomeScreen& homeScreen);

}  // namespace sentrel::simulated
