#pragma once

#include "platform/ports/DefaultsStore.h"
#include "platform/ports/Timers.h"

#include <memory>
#include <string>

namespace kelpa {

/// Where the store tells what went wrong with its file.
class StoreReport {
  public:
    virtual ~StoreReport() = default;
    virtual void warning(const std::string& message) = 0;
    virtual void error(const std::string& message) = 0;
};

/// The settings in one XML property list. A read costs one `stat` and no memory unless the file changed; a
/// write goes to disk at once, over whatever the file holds by then. A value that cannot be stored is kept,
/// read back, and stored with the next write that succeeds. A file that makes no sense may be one that
/// another program is writing: until it has rested for a while the last good values hold, and writes wait.
///
/// `path` is the file, or empty where there is no place for one; `report` and `queue`, which is the main
/// thread's, outlive the store. Damage is judged after `restSeconds` without a change. Reads nothing yet. At
/// its end it tries once more to store what could not be stored, and for that waits for a file to rest.
[[nodiscard]] std::unique_ptr<DefaultsStore> makePlistStore(std::string path, StoreReport& report,
                                                            Queue& queue, double restSeconds = 1);

} // namespace kelpa
