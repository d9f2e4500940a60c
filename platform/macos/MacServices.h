#pragma once

#include "platform/ports/Services.h"

#include <memory>
#include <string>

namespace kelpa {

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
