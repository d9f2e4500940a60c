#include "platform/linux/update/UpdateSetup.h"

#include "platform/linux/BuildConfig.h"
#include "platform/linux/Folders.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/services/Portal.h"

namespace kelpa {

namespace {

UpdateSupport supportOfThisCopy() {
    if (inSandbox())
        return UpdateSupport::Store;
    return *build::feedUrl == '\0' ? UpdateSupport::NoFeed : UpdateSupport::Feed;
}

} // namespace

UpdateSetup UpdateSetup::ofThisCopy(const SystemInfo& system, const std::string& language) {
    const auto os = system.osVersion();
    UpdateSetup setup;
    setup.support = supportOfThisCopy();
    setup.feed = build::feedUrl;
    setup.key = build::updateKey;
    setup.package = build::updatePackage;
    setup.version = build::number;
    setup.name = build::version;
    setup.system = std::to_string(os.major) + "." + std::to_string(os.minor) + "." + std::to_string(os.patch);
    setup.processor = system.machine();
    setup.language = language;
    setup.folder = cacheHome().value_or("/nonexistent") + "/" + build::identifier + "/update";
    setup.helper = helperPath("kelpa-update");
    return setup;
}

} // namespace kelpa
