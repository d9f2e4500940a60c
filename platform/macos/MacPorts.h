#pragma once

#include "platform/ports/Notifications.h"
#include "platform/ports/Ports.h"

#include <memory>
#include <string>

namespace kelpa {

// What the core asks of macOS. Where time counts, it passes `speed` times as fast as real time.

/// The system's clock, and the calendar and week that the user chose for it.
[[nodiscard]] std::unique_ptr<Clock> makeMacClock(double speed);
/// Timers of the main run loop in its common modes, so that they fire while a menu is open or a window is
/// dragged.
[[nodiscard]] std::unique_ptr<TickerSource> makeRunLoopTickers(double speed);
/// The main thread's queue.
[[nodiscard]] std::unique_ptr<Queue> makeMainQueue(double speed);
/// Serial queues with default attributes and default quality of service.
[[nodiscard]] std::unique_ptr<QueueSource> makeSerialQueues(double speed);

/// The per-user defaults of the application.
[[nodiscard]] std::unique_ptr<DefaultsStore> makeUserDefaultsStore();
/// The status item and its menu.
[[nodiscard]] std::unique_ptr<StatusBar> makeMacStatusBar();
/// The screens and windows of the session. Its client must outlive the process's last change of the screens.
[[nodiscard]] std::unique_ptr<WindowSystem> makeMacWindowSystem();

/// What the string tables of the main bundle have for a key, in the language that the system chose for the
/// user.
[[nodiscard]] std::string bundleText(const std::string& key);
/// The fonts among the bundle's resources, and Core Text's registry.
[[nodiscard]] std::unique_ptr<Fonts> makeMacFonts();
/// What the main bundle and the system say of themselves. The home is the container's folder when the
/// application runs sandboxed.
[[nodiscard]] SystemInfo macSystemInfo();

/// Lock and unlock as the login window tells of them to all applications of the user.
[[nodiscard]] std::unique_ptr<LockNotifications> makeDistributedLock();
/// Mouse and modifier-key events on their way to other applications. Mouse events need no permission;
/// modifier keys are seen only once the user has allowed the application to watch the keyboard. While the
/// screen is locked nothing counts: whoever moves the mouse there has not come back yet.
[[nodiscard]] std::unique_ptr<ActivityMonitor> makeGlobalActivity();
/// Whether somebody is busy, as the system tells of sound, cameras, the active application and who keeps the
/// display on. None of it needs a permission. On `services` the system's services may take their time; `main`
/// is the main thread's. Both must outlive the last answer.
[[nodiscard]] std::unique_ptr<BusyProbe> makeMacBusyness(Queue& services, Queue& main);
/// The system's notification centre, which asks the user for permission when the first one is shown.
[[nodiscard]] std::unique_ptr<Notifications> makeMacNotifications();

/// The system's own list of what starts when the user logs in: the application itself from macOS 13 on,
/// before that the small helper in its bundle that starts it, whose bundle identifier is `helperIdentifier`.
[[nodiscard]] std::unique_ptr<LoginItem> makeMacLoginItem(std::string helperIdentifier);
/// Mail through the system's sharing service.
[[nodiscard]] std::unique_ptr<MailComposer> makeMacMail();
/// The standard About panel, which shows the bundle's version by itself.
[[nodiscard]] std::unique_ptr<AboutPanel> makeMacAboutPanel();
/// The updater of this build. Where it was built without the Sparkle framework or without a feed it checks
/// for nothing, and says so when it is asked to.
[[nodiscard]] std::unique_ptr<Updater> makeMacUpdater();

} // namespace kelpa
