#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/tray/ItemPictures.h"
#include "platform/linux/tray/PlasmaColours.h"
#include "platform/linux/tray/StatusItemSink.h"
#include "platform/linux/tray/WatcherLink.h"

#include <functional>
#include <memory>
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
/// small signal; hosts without labels find it in the tooltip, which is announced once a minute at most while
/// the text runs, because hosts read the whole item again for it.
class StatusNotifierItem final : public StatusItemSink, private BusClient {
  public:
    /// Loop and bus outlive the item. `hostChanged` tells whether anything shows it, from the main loop.
    StatusNotifierItem(EventLoop& loop, Bus& bus, ItemIdentity identity,
                       std::function<void(bool present)> hostChanged);
    ~StatusNotifierItem() override;

    void show(const StatusItemModel& model, MenuClicks& clicks) override;
    void hide() override;
    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void titleChanged(const std::string& title) override;

    [[nodiscard]] bool hostPresent() const { return watcher_.hostPresent(); }

    // What hosts ask for.
    [[nodiscard]] const ItemIdentity& identity() const { return identity_; }
    [[nodiscard]] const ItemPictures& pictures() const { return pictures_; }
    [[nodiscard]] const std::string& label() const { return model_->title; }
    [[nodiscard]] const std::string& guide() const { return guide_; }

  private:
    void busOpened() override;
    void busLost() override;
    void appear();
    void disappear();
    void requestName();
    void nameAnswered(sd_bus_message* reply);
    void announceIcon();
    void setGuide(const std::string& title);
    void announceToolTip(bool hasTitle);

    EventLoop& loop_;
    Bus& bus_;
    ItemIdentity identity_;
    ItemPictures pictures_;
    WatcherLink watcher_;
    PlasmaColours colours_;
    std::string service_;
    const StatusItemModel* model_ = nullptr; ///< null while hidden
    MenuClicks* clicks_ = nullptr;           ///< null while hidden
    std::optional<DBusMenu> menu_;           ///< empty while hidden or without a bus
    std::string guide_;
    bool toolTipHasTitle_ = false;
    std::int64_t toolTipTime_ = 0; ///< seconds on the coarse monotonic clock
    BusSlot object_;
    BusSlot nameCall_;
    Subscription joined_;
};

} // namespace kelpa
