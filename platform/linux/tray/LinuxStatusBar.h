#pragma once

#include "platform/linux/tray/StatusItemSink.h"
#include "platform/ports/StatusBar.h"

#include <vector>

namespace kelpa {

/// The status bar as the core sees it: keeps what the item shows, and passes every real change on to the
/// places that show it. A place that joins late is given everything at once.
class LinuxStatusBar final : public StatusBar {
  public:
    LinuxStatusBar() = default;
    LinuxStatusBar(const LinuxStatusBar&) = delete;
    LinuxStatusBar& operator=(const LinuxStatusBar&) = delete;

    /// `sink` outlives the status bar or is removed before it goes. Adding one that is there does nothing.
    void addSink(StatusItemSink& sink);
    void removeSink(StatusItemSink& sink);

    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void createItem(const std::string& image, MenuClicks& clicks) override;
    void setTitle(const std::string& title) override;

  private:
    std::vector<MenuLine>::iterator find(int lineId);
    /// Sinks hear nothing before the item exists.
    template <typename Verb>
    void tell(const Verb& verb);

    StatusItemModel model_;
    MenuClicks* clicks_ = nullptr; ///< null until the item is created
    std::vector<StatusItemSink*> sinks_;
};

} // namespace kelpa
