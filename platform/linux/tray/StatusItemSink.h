#pragma once

#include "platform/ports/StatusBar.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kelpa {

/// The status item as it stands: everything that a place that shows it has to know.
struct StatusItemModel {
    std::string image; ///< the application image's name
    std::string title; ///< the text beside the image; empty for none
    std::vector<MenuLine> lines;
};

/// One way to bring the status item to the desktop: over D-Bus, or as an XEmbed icon. `LinuxStatusBar` keeps
/// the model and tells its sinks what changed after it changed, and only between `show` and `hide`.
class StatusItemSink {
  public:
    virtual ~StatusItemSink() = default;
    /// Shows the item with everything that `model` holds at this moment. Model and clicks outlive the sink,
    /// which may keep them and look things up again later.
    virtual void show(const StatusItemModel& model, MenuClicks& clicks) = 0;
    /// Takes the item away. It may be shown again.
    virtual void hide() = 0;
    virtual void lineInserted(std::size_t index, const MenuLine& line) = 0;
    virtual void lineRemoved(int lineId) = 0;
    virtual void lineChanged(const MenuLine& line) = 0;
    /// Only for a text that differs from the last one.
    virtual void titleChanged(const std::string& title) = 0;
};

} // namespace kelpa
