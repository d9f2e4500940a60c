#pragma once

#include <optional>
#include <string>

namespace kelpa {

class PrefState;
class PromptState;
class PrefWaterState;
class WaterPaneClient;
struct TicktackState;

/// What the program says of itself in menus, panels and mails.
struct AboutApp {
    std::optional<std::string> icon;
    std::string name;
    std::string version;
    std::string build;
    std::string model;
    std::string osVersion;
    std::string copyright;
    std::string releaseNotesLink;
    std::string feedbackMailbox;
};

/// The shared state of the program as its user interface uses it.
class UiClient {
  public:
    virtual ~UiClient() = default;
    [[nodiscard]] virtual PrefState& prefState() = 0;
    [[nodiscard]] virtual PromptState& promptState() = 0;
    [[nodiscard]] virtual PrefWaterState& waterState() = 0;
    [[nodiscard]] virtual WaterPaneClient& waterPaneClient() = 0;
    [[nodiscard]] virtual TicktackState& workState() = 0;
    [[nodiscard]] virtual TicktackState& breakState() = 0;
    [[nodiscard]] virtual bool manualPause() const = 0;
    virtual void setManualPause(bool pause) = 0;
    [[nodiscard]] virtual AboutApp about() const = 0;
};

} // namespace kelpa
