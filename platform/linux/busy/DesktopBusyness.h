#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/ports/Busy.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace kelpa {

class Bus;
class WaylandConnection;
class X11Connection;

/// Finds out whether one reason holds. Between two questions it watches nothing and keeps nothing.
struct BusySource {
    using Answer = std::function<void(bool holds)>;
    /// Blocks for nothing. `answer` is called at most once, from the main loop or inside the call. The handle
    /// ends the question, from anywhere but inside of `answer`.
    std::function<Subscription(Answer answer)> ask;
    /// Why nobody can be asked here, as a sentence in the user's language; nothing where somebody can.
    std::function<std::optional<std::string>()> unavailable;
};

/// The handle of a question: it goes with the handle, and its object with it.
[[nodiscard]] inline Subscription keeping(std::shared_ptr<void> question) {
    return Subscription([question = std::move(question)]() mutable { question = nullptr; });
}

// What these are given, other than texts, outlives the source.

/// Whether a program records sound from what is no monitor of the loudspeakers, as PulseAudio tells of it, or
/// PipeWire in its place.
[[nodiscard]] BusySource soundRecording(EventLoop& loop);
/// Whether a process of this user holds a video device, as whoever takes pictures does, the service that
/// shares a camera among programs included. `root` stands for the root folder, of which /proc is read.
[[nodiscard]] BusySource cameraUse(EventLoop& loop, const std::string& root = "");
/// Whether the active window covers a whole screen, by what an X server's window manager says of it.
[[nodiscard]] BusySource fullScreenWindow(X11Connection& connection);
/// The same by the list of windows of a Wayland compositor, which is asked for with the question and given
/// back with the answer. Many compositors have none for everybody.
[[nodiscard]] BusySource fullScreenWindow(WaylandConnection& connection);
/// Whether a program keeps the session from falling asleep when nobody touches it, as players and talks do:
/// by what logind, GNOME and KDE tell of it.
[[nodiscard]] BusySource keptAwake(Bus& session, Bus& system);

/// Whether somebody is busy at this desktop. A reason without a source is never a person's to choose here.
/// The loop outlives the object.
[[nodiscard]] std::unique_ptr<BusyProbe> makeDesktopBusyness(EventLoop& loop,
                                                             std::map<BusyReason, BusySource> sources);

} // namespace kelpa
