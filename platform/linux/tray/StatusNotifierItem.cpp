#include "platform/linux/tray/StatusNotifierItem.h"

#include "platform/linux/bus/BusMessage.h"

#include <ctime>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr const char* path = "/StatusNotifierItem";
constexpr const char* interface = "org.kde.StatusNotifierItem";
constexpr const char* symbolicIcon = "app.orvane.Kelpa-symbolic";
/// A panel that shows the text nowhere else shows what it was told last, and one that redraws it costs a
/// millisecond.
constexpr std::int64_t secondsBetweenToolTips = 10;

std::int64_t coarseSeconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return now.tv_sec;
}

using Item = StatusNotifierItem;
using Get = void (*)(BusWriter&, const Item&);

template <Get get>
int property(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* item,
             sd_bus_error*) noexcept {
    BusWriter writer(reply);
    get(writer, *static_cast<const Item*>(item));
    return writer.result();
}

void category(BusWriter& writer, const Item&) {
    writer.text("ApplicationStatus");
}
void id(BusWriter& writer, const Item& item) {
    writer.text(item.identity().id);
}
void name(BusWriter& writer, const Item& item) {
    writer.text(item.identity().name);
}
void status(BusWriter& writer, const Item&) {
    writer.text("Active");
}
void noWindow(BusWriter& writer, const Item&) {
    writer.integer(0);
}
void empty(BusWriter& writer, const Item&) {
    writer.text("");
}
/// A name and not the file's path, although hosts take both: only named symbolic icons get the panel's
/// colour.
void iconName(BusWriter& writer, const Item&) {
    writer.text(symbolicIcon);
}
void themeFolder(BusWriter& writer, const Item& item) {
    writer.text(item.pictures().themeFolder());
}
void noPixmaps(BusWriter& writer, const Item&) {
    writer.open('a', "(iiay)").close();
}
void pixmaps(BusWriter& writer, const Item& item) {
    writer.open('a', "(iiay)");
    for (const Pixmap& pixmap : item.pictures().pixmaps())
        writer.open('r', "iiay").integer(pixmap.size).integer(pixmap.size).bytes(pixmap.pixels).close();
    writer.close();
}
void toolTip(BusWriter& writer, const Item& item) {
    writer.open('r', "sa(iiay)ss").text("");
    noPixmaps(writer, item);
    writer.text(item.identity().name).text(item.label()).close();
}
void yes(BusWriter& writer, const Item&) {
    writer.boolean(true);
}
void menuPath(BusWriter& writer, const Item&) {
    writer.object(DBusMenu::path);
}
void label(BusWriter& writer, const Item& item) {
    writer.text(item.label());
}
void guide(BusWriter& writer, const Item& item) {
    writer.text(item.guide());
}
void anyPlace(BusWriter& writer, const Item&) {
    writer.natural(0);
}

constexpr auto fixed = SD_BUS_VTABLE_PROPERTY_CONST;

// There is no Activate and no ContextMenu: hosts that find neither open the menu on either click.
const sd_bus_vtable vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Category", "s", property<category>, 0, fixed),
    SD_BUS_PROPERTY("Id", "s", property<id>, 0, fixed),
    SD_BUS_PROPERTY("Title", "s", property<name>, 0, fixed),
    SD_BUS_PROPERTY("Status", "s", property<status>, 0, fixed),
    SD_BUS_PROPERTY("WindowId", "i", property<noWindow>, 0, fixed),
    SD_BUS_PROPERTY("IconName", "s", property<iconName>, 0, fixed),
    SD_BUS_PROPERTY("IconThemePath", "s", property<themeFolder>, 0, fixed),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", property<pixmaps>, 0, fixed),
    SD_BUS_PROPERTY("IconAccessibleDesc", "s", property<name>, 0, fixed),
    SD_BUS_PROPERTY("OverlayIconName", "s", property<empty>, 0, fixed),
    SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", property<noPixmaps>, 0, fixed),
    SD_BUS_PROPERTY("AttentionIconName", "s", property<empty>, 0, fixed),
    SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", property<noPixmaps>, 0, fixed),
    SD_BUS_PROPERTY("AttentionAccessibleDesc", "s", property<empty>, 0, fixed),
    SD_BUS_PROPERTY("AttentionMovieName", "s", property<empty>, 0, fixed),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", property<toolTip>, 0, 0),
    SD_BUS_PROPERTY("ItemIsMenu", "b", property<yes>, 0, fixed),
    SD_BUS_PROPERTY("Menu", "o", property<menuPath>, 0, fixed),
    SD_BUS_PROPERTY("XAyatanaLabel", "s", property<label>, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabelGuide", "s", property<guide>, 0, 0),
    SD_BUS_PROPERTY("XAyatanaOrderingIndex", "u", property<anyPlace>, 0, fixed),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewTitle", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_SIGNAL("XAyatanaNewLabel", "ss", 0),
    SD_BUS_VTABLE_END,
};

} // namespace

StatusNotifierItem::StatusNotifierItem(EventLoop& loop, Bus& bus, ItemIdentity identity,
                                       std::function<void(bool present)> hostChanged)
    : loop_(loop), bus_(bus), identity_(std::move(identity)), pictures_(identity_.data),
      watcher_(bus, std::move(hostChanged)), colours_(loop, [this] { announceIcon(); }),
      service_("org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1"), joined_(bus.join(*this)) {}

StatusNotifierItem::~StatusNotifierItem() {
    hide();
}

void StatusNotifierItem::show(const StatusItemModel& model, MenuClicks& clicks) {
    model_ = &model;
    clicks_ = &clicks;
    setGuide(model.title);
    toolTipHasTitle_ = !model.title.empty();
    toolTipTime_ = coarseSeconds();
    if (bus_.open())
        appear();
}

void StatusNotifierItem::hide() {
    if (model_ == nullptr)
        return;
    watcher_.stop();
    if (bus_.open())
        sd_bus_release_name_async(bus_.handle(), nullptr, service_.c_str(), nullptr, nullptr);
    disappear();
    model_ = nullptr;
    clicks_ = nullptr;
}

void StatusNotifierItem::busOpened() {
    if (model_ != nullptr)
        appear();
}

void StatusNotifierItem::busLost() {
    disappear();
    watcher_.lose();
}

void StatusNotifierItem::appear() {
    menu_.emplace(loop_, bus_, pictures_, *model_, *clicks_);
    object_ = bus_.serve(path, interface, vtable, this);
    colours_.start(bus_);
    requestName();
}

void StatusNotifierItem::disappear() {
    colours_.stop();
    nameCall_.reset();
    object_.reset();
    menu_.reset();
}

void StatusNotifierItem::requestName() {
    nameCall_ = bus_.call<&Item::nameAnswered>(bus_.newNameRequest(service_, Bus::doNotQueue), *this);
}

/// The name is for whoever looks for items by their names, and may be refused, as a sandbox does. The panel
/// is told the connection's own name: of any other it watches the owner, and GNOME's extension drops an item
/// whose properties arrive before that owner is known.
void StatusNotifierItem::nameAnswered(sd_bus_message*) {
    watcher_.start(bus_.name());
}

void StatusNotifierItem::lineInserted(std::size_t, const MenuLine&) {
    if (menu_)
        menu_->layoutChanged();
}

void StatusNotifierItem::lineRemoved(int) {
    if (menu_)
        menu_->layoutChanged();
}

void StatusNotifierItem::lineChanged(const MenuLine& line) {
    if (menu_)
        menu_->lineChanged(line);
}

void StatusNotifierItem::titleChanged(const std::string& title) {
    setGuide(title);
    if (!bus_.open())
        return;
    sd_bus_emit_signal(bus_.handle(), path, interface, "XAyatanaNewLabel", "ss", title.c_str(),
                       guide_.c_str());
    announceToolTip(!title.empty());
}

void StatusNotifierItem::setGuide(const std::string& title) {
    guide_.assign(title);
    for (char& c : guide_)
        if (c >= '0' && c <= '9')
            c = '0';
}

void StatusNotifierItem::announceIcon() {
    sd_bus_emit_signal(bus_.handle(), path, interface, "NewIcon", nullptr);
}

void StatusNotifierItem::announceToolTip(bool hasTitle) {
    const auto now = coarseSeconds();
    if (hasTitle == toolTipHasTitle_ && now - toolTipTime_ < secondsBetweenToolTips)
        return;
    toolTipHasTitle_ = hasTitle;
    toolTipTime_ = now;
    sd_bus_emit_signal(bus_.handle(), path, interface, "NewToolTip", nullptr);
}

} // namespace kelpa
