#include "platform/macos/MacUpdater.h"

namespace kelpa {

std::unique_ptr<Updater> makeMacUpdater() {
    return nullptr;
}

} // namespace kelpa
