#pragma once

#include "base/Text.h"
#include "platform/ports/Services.h"
#include "platform/ports/StatusBar.h"
#include "prefs/App.h"
#include "ui/Menu.h"

namespace kelpa {

/// What a person is told on a desktop that has no place for the status item.
struct NoTrayText {
    std::string summary = localized("This desktop has no tray for Kelpa");
    std::string body =
        localized("Your breaks come all the same. Click here for the preferences, or start Kelpa again.");
    std::string action = localized("Settings"); ///< names what a click does
};

/// The status item and its menu: the program's everyday face. Both are made on first use and then kept.
class StatusBarController {
  public:
    enum Tag { pause = 2, water = 3 };

    /// All must outlive the process's last use of the status bar. Call before anything else.
    static void wire(App& app, StatusBar& face, ApplicationLoop& application, const Services& services);

    /// Makes the item, unless it is there: from then on the end of each work period starts a break.
    static void item();
    static Menu& menu();

    static void showTime(bool show);
    static void insetWaterItem();
    static void removeWaterItem();
    static void updateWaterItem();
};

} // namespace kelpa
