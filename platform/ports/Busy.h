#pragma once

#include "base/Published.h"
#include "base/Text.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace kelpa {

/// By what the desktop shows that a person is not to be interrupted.
enum class BusyReason {
    Sound,      ///< a program records sound, from what is no monitor of the loudspeakers
    Camera,     ///< a camera is in use by a program of this user
    FullScreen, ///< the active window covers a whole screen
    Awake,      ///< a program keeps the session awake
};
inline constexpr BusyReason allBusyReasons[] = {BusyReason::Sound, BusyReason::Camera, BusyReason::FullScreen,
                                                BusyReason::Awake};

/// As settings, scripts and the log name them, in their order.
inline constexpr std::array<std::string_view, 4> busyReasonNames = {"sound", "camera", "fullscreen", "awake"};
[[nodiscard]] constexpr std::string_view nameOf(BusyReason reason) {
    return nameOf(busyReasonNames, reason);
}

/// Looks whether somebody is busy, and only when asked: between two questions it watches nothing and keeps
/// nothing.
class BusyProbe {
  public:
    using Answer = std::function<void(std::optional<BusyReason>)>;

    virtual ~BusyProbe() = default;
    /// Asks for `reasons`, which are not empty, and blocks for none of them. `answer` is called at most once,
    /// on the main thread and never inside the call: with the first of them that is found to hold now, or
    /// with nothing once none was found. What cannot be asked does not hold. The handle ends the question:
    /// whatever was started for it ends with it, and `answer` is not called any more.
    virtual Subscription ask(const std::set<BusyReason>& reasons, Answer answer) = 0;
    /// Why this desktop cannot be asked for `reason`, in the user's language and as a whole sentence; nothing
    /// where it can. Called when the preferences are shown.
    [[nodiscard]] virtual std::optional<std::string> unavailable(BusyReason reason) = 0;
};

} // namespace kelpa
