#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/tray/ItemActivation.h"
#include "platform/linux/tray/ItemPictures.h"
#include "platform/linux/tray/LinuxStatusBar.h"
#include "platform/linux/tray/WatcherLink.h"

#include <functional>
#include <optional>
#include <string>

namespace kelpa {

/// What the item says of itself; the same in every state.
struct ItemIdentity {
    std::string id;   ///< names the program to hosts that remember the user's wishes
    std::string name; ///< shown to people and read out by screen readers
    std::string data; ///< the program's data folder
};

/// The status item as `org.kde.StatusNotifierItem`, with the text as its label. A changed text costs one
/// small signal; hosts without labels find it in the tooltip, which is announced every ten seconds at most
/// while the text runs, because hosts read the whole item again for it.
class StatusNotifierItem final : public StatusItemSink, private BusClient {
  public:
    /// Real seconds in which Plasma's panel has changed its colours after it was said that they change. It
    /// draws an icon in those that it had when it was last told of the icon, on a dark panel maybe dark ones.
    static constexpr double secondsOfRecolouring = 1;

    /// Loop, bus and activation outlive the item. `hostChanged` runs from the main loop when something begins
    /// to show the item and when nothing does any more.
    StatusNotifierItem(EventLoop& loop, Bus& bus, ItemIdentity identity, ItemActivation& activation,
                       std::function<void(bool present)> hostChanged);
    ~StatusNotifierItem() override;

    void show(const StatusItemModel& model, MenuClicks& clicks) override;
    void hide() override;
    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void titleChanged(const std::string& title) override;
    void hintChanged(const std::string& hint) override;

    /// What hosts read. The bus library takes what stands here as it is.
    struct Shown {
        const ItemPictures* pictures;
        ItemActivation* activation;
        const char* id;
        const char* name;
        const char* title = nullptr;
        const char* guide = nullptr;
        const char* hint = nullptr;
        const char* category = "ApplicationStatus";
        const char* status = "Active";
        /// A name and not the file's path, although hosts take both: only named symbolic icons get the
        /// panel's colour.
        const char* icon = "app.orvane.Kelpa-symbolic";
        const char* menu = DBusMenu::path;
        const char* nothing = "";
        int yes = 1;
        int zero = 0;
    };

  private:
    void busOpened() override;
    void busLost() override;
    void busCaughtUp() override;
    void appear();
    void disappear();
    void nameAnswered(sd_bus_message* reply);
    void coloursChanged(sd_bus_message* signal);
    void showTitle();
    void showHint();
    void announceTitle();
    void announce(const char* signal);
    void announceToolTip(bool hasTitle);

    EventLoop& loop_;
    Bus& bus_;
    ItemIdentity identity_;
    ItemPictures pictures_;
    Shown shown_;
    WatcherLink watcher_;
    std::string service_;
    const StatusItemModel* model_ = nullptr; ///< null while hidden
    MenuClicks* clicks_ = nullptr;           ///< null while hidden
    std::optional<DBusMenu> menu_;           ///< empty while hidden or without a bus
    std::string guide_;                      ///< as wide as the title, so that hosts need not move others
    bool toolTipHasTitle_ = false;
    std::int64_t toolTipTime_ = 0; ///< seconds on the coarse monotonic clock
    BusSlot object_, nameCall_, colours_;
    Subscription recolouring_;
    Subscription joined_;
};

} // namespace kelpa
