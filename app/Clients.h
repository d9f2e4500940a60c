#pragma once

#include "logging/SharedLogger.h"
#include "platform/ports/Ports.h"
#include "prefs/PrefState.h"
#include "prefs/PromptState.h"
#include "timer/SystemEventController.h"
#include "timer/TicktackController.h"
#include "ui/UiClient.h"
#include "water/PrefWaterState.h"
#include "water/WaterPane.h"

namespace kelpa {

/// What each part of the program asks of the others, answered by those others. The parts know only their own
/// small interface, so that none depends on one above it.
[[nodiscard]] PrefClient& prefClient();
[[nodiscard]] PromptClient& promptClient();
[[nodiscard]] WaterClient& waterClient();
[[nodiscard]] WaterPaneClient& waterPaneClient();
[[nodiscard]] TicktackClient& ticktackClient();
[[nodiscard]] SystemEventClient& systemEventClient();
[[nodiscard]] UiClient& uiClient();

/// The ports that the clients need; they must outlive the process's last use.
void wireClients(Ports& ports);

} // namespace kelpa
