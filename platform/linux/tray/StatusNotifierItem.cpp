#include "platform/linux/tray/StatusNotifierItem.h"

#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/tray/ItemPictures.h"

#include <cstddef>
#include <ctime>
#include <optional>
#include <unistd.h>
#include <utility>

namespace kelpa {

namespace {

constexpr const char* path = "/StatusNotifierItem";
constexpr const char* interface = "org.kde.StatusNotifierItem";
/// What KDE's settings send to every program for colours, fonts, icons and the like.
constexpr BusAddress plasmaSettings = {nullptr, "/KGlobalSettings", "org.kde.KGlobalSettings"};
/// A panel that shows the text nowhere else shows what it was told last, and one that redraws it costs a
/// millisecond.
constexpr std::int64_t secondsBetweenToolTips = 10;

std::int64_t coarseSeconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return now.tv_sec;
}

/// What hosts read. The bus library takes what stands here as it is.
struct Shown {
    const std::string* data;
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

template <void (*write)(BusWriter&, const Shown&)>
int property(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* shown,
             sd_bus_error*) noexcept {
    BusWriter writer(reply);
    write(writer, *static_cast<const Shown*>(shown));
    return writer.result();
}

void themeFolder(BusWriter& writer, const Shown& shown) {
    writer.text(*shown.data + "/icons");
}
void noPixmaps(BusWriter& writer, const Shown&) {
    writer.open('a', "(iiay)").close();
}
void pixmaps(BusWriter& writer, const Shown& shown) {
    writer.open('a', "(iiay)");
    for (const Pixmap& pixmap : itemPixmaps(*shown.data))
        writer.open('r', "iiay").integer(pixmap.size).integer(pixmap.size).bytes(pixmap.pixels).close();
    writer.close();
}
/// Everything stands in the title: some hosts show that alone, and those that show the text as well would say
/// it twice.
void toolTip(BusWriter& writer, const Shown& shown) {
    std::string title = shown.name;
    if (*shown.title != '\0')
        title.append(" ").append(shown.title);
    if (*shown.hint != '\0')
        title.append(" – ").append(shown.hint);
    writer.open('r', "sa(iiay)ss").text("");
    noPixmaps(writer, shown);
    writer.text(title).text("").close();
}

/// Where the click was is not used: hosts differ in the unit, and the pointer is still there.
int activate(sd_bus_message* call, void* shown, sd_bus_error*) noexcept {
    static_cast<const Shown*>(shown)->activation->activate();
    return sd_bus_reply_method_return(call, nullptr);
}

constexpr auto fixed = SD_BUS_VTABLE_PROPERTY_CONST;

// `ItemIsMenu` has most hosts open the menu on either click. The others leave the clicks to the program.
const sd_bus_vtable vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Category", "s", nullptr, offsetof(Shown, category), fixed),
    SD_BUS_PROPERTY("Id", "s", nullptr, offsetof(Shown, id), fixed),
    SD_BUS_PROPERTY("Title", "s", nullptr, offsetof(Shown, name), fixed),
    SD_BUS_PROPERTY("Status", "s", nullptr, offsetof(Shown, status), fixed),
    SD_BUS_PROPERTY("WindowId", "i", nullptr, offsetof(Shown, zero), fixed),
    SD_BUS_PROPERTY("IconName", "s", nullptr, offsetof(Shown, icon), fixed),
    SD_BUS_PROPERTY("IconThemePath", "s", property<themeFolder>, 0, fixed),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", property<pixmaps>, 0, fixed),
    SD_BUS_PROPERTY("IconAccessibleDesc", "s", nullptr, offsetof(Shown, name), fixed),
    SD_BUS_PROPERTY("OverlayIconName", "s", nullptr, offsetof(Shown, nothing), fixed),
    SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", property<noPixmaps>, 0, fixed),
    SD_BUS_PROPERTY("AttentionIconName", "s", nullptr, offsetof(Shown, nothing), fixed),
    SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", property<noPixmaps>, 0, fixed),
    SD_BUS_PROPERTY("AttentionAccessibleDesc", "s", nullptr, offsetof(Shown, nothing), fixed),
    SD_BUS_PROPERTY("AttentionMovieName", "s", nullptr, offsetof(Shown, nothing), fixed),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", property<toolTip>, 0, 0),
    SD_BUS_PROPERTY("ItemIsMenu", "b", nullptr, offsetof(Shown, yes), fixed),
    SD_BUS_PROPERTY("Menu", "o", nullptr, offsetof(Shown, menu), fixed),
    SD_BUS_PROPERTY("XAyatanaLabel", "s", nullptr, offsetof(Shown, title), 0),
    SD_BUS_PROPERTY("XAyatanaLabelGuide", "s", nullptr, offsetof(Shown, guide), 0),
    SD_BUS_PROPERTY("XAyatanaOrderingIndex", "u", nullptr, offsetof(Shown, zero), fixed),
    SD_BUS_METHOD("Activate", "ii", "", activate, 0),
    SD_BUS_METHOD("ContextMenu", "ii", "", activate, 0),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewTitle", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_SIGNAL("XAyatanaNewLabel", "ss", 0),
    SD_BUS_VTABLE_END,
};

class StatusNotifierItem final : public StatusItemSink, private BusClient {
  public:
    StatusNotifierItem(EventLoop& loop, Bus& bus, ItemIdentity identity, ItemActivation& activation,
                       std::function<void(bool present)> hostChanged)
        : loop_(loop), bus_(bus),
          identity_(std::move(identity)), shown_{&identity_.data, &activation, identity_.id.c_str(),
                                                 identity_.name.c_str()},
          hostChanged_(std::move(hostChanged)),
          service_("org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1"),
          joined_(bus.join(*this)) {}
    ~StatusNotifierItem() override { hide(); }

    void show(const StatusItemModel& model, MenuClicks& clicks) override {
        model_ = &model;
        clicks_ = &clicks;
        showTitle();
        showHint();
        toolTipHasTitle_ = !model.title.empty();
        toolTipTime_ = coarseSeconds();
        if (bus_.open())
            appear();
    }

    void hide() override {
        if (model_ == nullptr)
            return;
        if (bus_.open())
            sd_bus_release_name_async(bus_.handle(), nullptr, service_.c_str(), nullptr, nullptr);
        disappear();
        model_ = nullptr;
        clicks_ = nullptr;
    }

    void lineInserted(std::size_t /*index*/, const MenuLine& /*line*/) override { layoutChanged(); }
    void lineRemoved(int /*lineId*/) override { layoutChanged(); }

    void lineChanged(const MenuLine& line) override {
        if (menu_)
            menu_->lineChanged(line);
    }

    void titleChanged(const std::string& title) override {
        showTitle();
        if (!bus_.keepsUp())
            return;
        announceTitle();
        announceToolTip(!title.empty());
    }

    void hintChanged(const std::string& /*hint*/) override {
        showHint();
        if (bus_.keepsUp())
            announce("NewToolTip");
    }

  private:
    void busOpened() override {
        if (model_ != nullptr)
            appear();
    }

    void busLost() override {
        disappear();
        setHostPresent(false);
    }

    void busCaughtUp() override {
        if (!menu_)
            return;
        announceTitle();
        announce("NewToolTip");
        menu_->layoutChanged();
    }

    void layoutChanged() {
        if (menu_)
            menu_->layoutChanged();
    }

    void appear() {
        menu_.emplace(loop_, bus_, identity_.data, *model_, *clicks_, *shown_.activation);
        object_ = bus_.serve(path, interface, vtable, &shown_);
        colours_ = bus_.match<&StatusNotifierItem::coloursChanged>(signalRule(plasmaSettings, "notifyChange"),
                                                                   *this);
        nameCall_ = bus_.call<&StatusNotifierItem::nameAnswered>(
            bus_.newNameRequest(service_, Bus::doNotQueue), *this);
    }

    void disappear() {
        recolouring_.cancel();
        watcher_.reset();
        for (BusSlot* slot : {&object_, &nameCall_, &colours_})
            slot->reset();
        menu_.reset();
    }

    /// The name is for whoever looks for items by their names, and may be refused, as a sandbox does. The
    /// panel is told the connection's own name: of any other it watches the owner, and GNOME's extension
    /// drops an item whose properties arrive before that owner is known.
    void nameAnswered(sd_bus_message* /*reply*/) {
        watcher_ = registerItem(bus_, [this](bool present) { setHostPresent(present); });
    }

    void setHostPresent(bool present) {
        if (std::exchange(hostPresent_, present) != present)
            hostChanged_(present);
    }

    /// The panel is told of the icon once for changes that come together.
    void coloursChanged(sd_bus_message* /*signal*/) {
        recolouring_ = loop_.afterReal(secondsOfRecolouring, [this] {
            recolouring_.cancel();
            announce("NewIcon");
        });
    }

    /// The model's text lies elsewhere after it changed.
    void showTitle() {
        guide_.assign(model_->title);
        for (char& c : guide_)
            if (c >= '0' && c <= '9')
                c = '0';
        shown_.title = model_->title.c_str();
        shown_.guide = guide_.c_str();
    }

    void showHint() { shown_.hint = model_->hint.c_str(); }
    void announceTitle() {
        sd_bus_emit_signal(bus_.handle(), path, interface, "XAyatanaNewLabel", "ss", shown_.title,
                           shown_.guide);
    }

    void announce(const char* signal) { sd_bus_emit_signal(bus_.handle(), path, interface, signal, nullptr); }
    void announceToolTip(bool hasTitle) {
        const auto now = coarseSeconds();
        if (hasTitle == toolTipHasTitle_ && now - toolTipTime_ < secondsBetweenToolTips)
            return;
        toolTipHasTitle_ = hasTitle;
        toolTipTime_ = now;
        announce("NewToolTip");
    }

    EventLoop& loop_;
    Bus& bus_;
    ItemIdentity identity_;
    Shown shown_;
    std::function<void(bool)> hostChanged_;
    std::optional<bool> hostPresent_; ///< empty until the first answer
    std::shared_ptr<void> watcher_;
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

} // namespace

std::unique_ptr<StatusItemSink> makeStatusNotifierItem(EventLoop& loop, Bus& bus, ItemIdentity identity,
                                                       ItemActivation& activation,
                                                       std::function<void(bool present)> hostChanged) {
    return std::make_unique<StatusNotifierItem>(loop, bus, std::move(identity), activation,
                                                std::move(hostChanged));
}

} // namespace kelpa
