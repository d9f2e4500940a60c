#include "platform/linux/tray/TrayFallback.h"

namespace kelpa {

void TrayFallback::setHostPresent(bool present) {
    if (present) {
        waiting_.cancel();
        statusBar_.removeSink(sink_);
    } else if (!waiting_.active()) {
        waiting_ = loop_.afterReal(patience, [this] { statusBar_.addSink(sink_); });
    }
}

} // namespace kelpa
