#pragma once

#include "platform/ports/Busy.h"
#include "platform/ports/HistoryWindow.h"
#include "platform/ports/Notifications.h"
#include "platform/ports/PreferencesWindow.h"

#include <string>

namespace kelpa {

/// Starts the program when the user logs in.
class LoginItem {
  public:
    virtual ~LoginItem() = default;
    /// Failures are reported to the system log by the implementation and otherwise ignored.
    virtual void setEnabled(bool enabled) = 0;
};

/// Looks for new versions of the program and shows its own windows.
class Updater {
  public:
    virtual ~Updater() = default;
    virtual void setAutomaticallyChecks(bool checks) = 0;
    virtual void setCheckInterval(double seconds) = 0;
    virtual void setSendsSystemProfile(bool sends) = 0;
    virtual void start() = 0;
    virtual void checkForUpdates() = 0;
};

/// A message handed to the user's mail program.
struct Mail {
    std::string subject;
    std::string recipient;
    std::string body;
    std::string attachment; ///< path of a file; empty for none
};

class MailComposer {
  public:
    virtual ~MailComposer() = default;
    /// Opens a new message in the user's mail program; does nothing where there is none.
    virtual void compose(const Mail& mail) = 0;
};

class AboutPanel {
  public:
    virtual ~AboutPanel() = default;
    virtual void show(const AboutContent& about) = 0;
};

/// The run of the program itself.
class ApplicationLoop {
  public:
    virtual ~ApplicationLoop() = default;
    /// Ends the program in good order.
    virtual void terminate() = 0;
};

/// The services that this platform has; an absent one is null, and its menu line is disabled.
struct Services {
    LoginItem* loginItem = nullptr;
    Updater* updater = nullptr;
    MailComposer* mail = nullptr;
    AboutPanel* about = nullptr;
    PreferencesWindow* preferences = nullptr;
    Notifications* notifications = nullptr;
    BusyProbe* busy = nullptr;
    HistoryWindow* history = nullptr;
};

} // namespace kelpa
