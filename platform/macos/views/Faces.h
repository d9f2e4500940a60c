#pragma once

#import "platform/macos/windows/KelpaWindow.h"

#include "platform/ports/WindowFaces.h"

#include <memory>

namespace kelpa {

// What fills the program's own windows. Each is a view in the window until it is let go of; `client` must
// outlive the view's last click.

/// What to do, how long, and the way out of it.
[[nodiscard]] std::unique_ptr<BreakScreenFace> makeBreakScreen(KelpaWindow* window,
                                                               BreakScreenClient& client);
/// How far the day has come, when the next drink is due, and the answer to it.
[[nodiscard]] std::unique_ptr<WaterPanelFace> makeWaterPanel(KelpaWindow* window, WaterPanelClient& client);

} // namespace kelpa
