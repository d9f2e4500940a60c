#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/tray/ItemActivation.h"
#include "platform/linux/tray/LinuxStatusBar.h"

#include <string>
#include <vector>

namespace kelpa {

/// The menu as `com.canonical.dbusmenu`, at the object path /MenuBar. Everything it tells comes straight from
/// the model.
class DBusMenu {
  public:
    static constexpr const char* path = "/MenuBar";

    /// All arguments, of which `data` is the program's data folder, outlive the menu, and the bus is open for
    /// as long.
    DBusMenu(EventLoop& loop, Bus& bus, const std::string& data, const StatusItemModel& model,
             MenuClicks& clicks, ItemActivation& activation);

    /// Tells hosts that lines came or went.
    void layoutChanged();
    /// Tells hosts what a line looks like now.
    void lineChanged(const MenuLine& line);

    int getLayout(sd_bus_message* call, sd_bus_error* error);
    int getGroupProperties(sd_bus_message* call, sd_bus_error* error);
    int getProperty(sd_bus_message* call, sd_bus_error* error);
    int event(sd_bus_message* call, sd_bus_error* error);
    int eventGroup(sd_bus_message* call, sd_bus_error* error);
    int aboutToShow(sd_bus_message* call, sd_bus_error* error);
    int aboutToShowGroup(sd_bus_message* call, sd_bus_error* error);

  private:
    [[nodiscard]] const MenuLine* find(int id) const;
    const MenuLine* readLine(sd_bus_message* call, sd_bus_error* error) const;
    void writeLayout(BusWriter& writer, const MenuLine& parent, int depth,
                     const std::vector<std::string>& names) const;
    void obey(const MenuLine& line, sd_bus_message* event);

    EventLoop& loop_;
    Bus& bus_;
    const std::string& data_;
    const StatusItemModel& model_;
    MenuClicks& clicks_;
    ItemActivation& activation_;
    MenuLine root_; ///< the menu itself, which goes by the id 0
    std::uint32_t revision_ = 1;
    BusSlot object_;
};

} // namespace kelpa
