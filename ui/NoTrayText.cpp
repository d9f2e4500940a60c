#include "ui/NoTrayText.h"

#include "base/Text.h"

namespace kelpa {

NoTrayText noTrayText() {
    return {localized("This desktop has no tray for Kelpa"),
            localized("Your breaks come all the same. Click here for the preferences, or start Kelpa again."),
            localized("Settings")};
}

} // namespace kelpa
