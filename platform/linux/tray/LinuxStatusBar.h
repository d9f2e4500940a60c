#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/ports/StatusBar.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kelpa {

/// The status item as it stands: everything that a place that shows it has to know.
struct StatusItemModel {
    std::string image; ///< the application image's name
    std::string title; ///< the text beside the image; empty for none
    std::string hint;  ///< a sentence for the tooltip; empty for none
    std::vector<MenuLine> lines;
};

/// One way to bring the status item to the desktop: over D-Bus, or as an XEmbed icon. `LinuxStatusBar` keeps
/// the model and calls its sinks after a change of it, and only between `show` and `hide`.
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
    /// Only for a sentence that differs from the last one.
    virtual void hintChanged(const std::string& hint) = 0;
};

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
    void setHint(const std::string& hint) override;

  private:
    std::vector<MenuLine>::iterator find(int lineId);
    /// Sinks are not called before the item exists.
    template <typename Verb>
    void tell(const Verb& verb);

    StatusItemModel model_;
    MenuClicks* clicks_ = nullptr; ///< null until the item is created
    std::vector<StatusItemSink*> sinks_;
};

/// Shows the item in another way for as long as nothing on the bus shows it. Waits a moment with that: one
/// who is there has answered by then, and one who comes later, as panels do at the start of a session, still
/// takes over.
class TrayFallback {
  public:
    static constexpr double patience = 0.5; ///< real seconds

    /// All arguments outlive the fallback; it begins with what `setHostPresent` says.
    TrayFallback(EventLoop& loop, LinuxStatusBar& statusBar, StatusItemSink& sink)
        : loop_(loop), statusBar_(statusBar), sink_(sink) {}

    /// Whether something on the bus shows the item now.
    void setHostPresent(bool present);

  private:
    EventLoop& loop_;
    LinuxStatusBar& statusBar_;
    StatusItemSink& sink_;
    Subscription waiting_;
};

} // namespace kelpa
