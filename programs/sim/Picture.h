#pragma once

#include "device/screen/Canvas.h"
#include "programs/sim/Phone.h"

namespace sentrel::sim {

/// The phone's screen as it is at this moment: application or home screen, prompts, number pad.
screen::Canvas takePicture(Phone& phone);

}  // namespace sentrel::sim
