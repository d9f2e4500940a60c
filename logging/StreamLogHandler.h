#pragma once

#include "logging/LineLogHandler.h"

namespace kelpa {

/// Writes the lines of a label to standard output.
class StreamLogHandler final : public LineLogHandler {
  public:
    StreamLogHandler(std::string label, const Clock& clock)
        : LineLogHandler(std::move(label), std::make_shared<StandardOutputStream>(), clock) {}
};

} // namespace kelpa
