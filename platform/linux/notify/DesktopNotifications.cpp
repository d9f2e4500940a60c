#include "platform/linux/notify/DesktopNotifications.h"

#include <algorithm>
#include <list>
#include <utility>

namespace kelpa {

namespace {

constexpr BusAddress service = {"org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                "org.freedesktop.Notifications"};
constexpr std::int32_t asLongAsUsual = -1;
constexpr double millisecondsASecond = 1000;
constexpr double longest = 3.6e6; ///< milliseconds: of a word before a break it is more than enough

class DesktopNotifications final : public Notifications, private BusClient {
  public:
    DesktopNotifications(Bus& bus, NotificationSender sender, std::function<void(const std::string&)> failed)
        : bus_(bus), sender_(std::move(sender)), failed_(std::move(failed)), joined_(bus.join(*this)) {}

    void show(const Notification& notification, std::function<void(const std::string&)> pressed) override {
        withdraw();
        const BusMessage message = bus_.newCall(service, "Notify");
        if (!message || !bus_.keepsUp() || write(message.get(), notification) < 0)
            return failed_("The notification is not shown: no session bus takes it");
        sd_bus_message_set_auto_start(message.get(), 1);
        shown_.emplace_back(*this, std::move(pressed)).send(message);
    }

    void withdraw() override {
        if (shown_.empty())
            return;
        Shown& newest = shown_.back();
        newest.fallSilent();
        newest.close();
        if (!newest.unanswered())
            shown_.pop_back();
    }

  private:
    /// A notification from when it is sent until it has gone.
    class Shown {
      public:
        Shown(DesktopNotifications& owner, std::function<void(const std::string&)> pressed)
            : owner_(owner), pressed_(std::move(pressed)),
              clicks_(owner.bus_.match<&Shown::clicked>(signalRule(service, "ActionInvoked"), *this)),
              closing_(owner.bus_.match<&Shown::closed>(signalRule(service, "NotificationClosed"), *this)) {}

        /// However late the answer is: without the number in it nothing can be taken away.
        void send(const BusMessage& message) {
            call_ = owner_.bus_.call<&Shown::answered>(message, *this, Bus::forEver);
        }

        [[nodiscard]] bool unanswered() const { return call_ != nullptr; }
        /// From now on nobody is told of presses.
        void fallSilent() {
            pressed_ = nullptr;
            clicks_.reset();
            closing_.reset();
        }

        /// Takes it away where it has a number, which means nothing to anybody but who gave it.
        void close() const {
            if (number_ != 0)
                owner_.bus_.send(owner_.bus_.newCall({service_.c_str(), service.path, service.interface},
                                                     "CloseNotification", "u", number_));
        }

      private:
        void answered(sd_bus_message* reply) {
            const bool wanted = static_cast<bool>(pressed_);
            const BusSlot call = std::move(call_);
            if (readFrom(reply, "u", &number_)) {
                const char* sender = sd_bus_message_get_sender(reply);
                service_ = sender == nullptr ? "" : sender;
                if (wanted)
                    return;
                close();
            } else {
                const sd_bus_error* error = sd_bus_message_get_error(reply);
                owner_.failed_(std::string("The notification is not shown: ") +
                               (error == nullptr || error->message == nullptr
                                    ? "the service answers in an unknown way"
                                    : error->message));
            }
            owner_.forget(*this);
        }

        /// Everybody hears of what happens to all notifications, and a service that takes the place of
        /// another gives the same numbers anew.
        [[nodiscard]] bool isOurs(sd_bus_message* signal, std::uint32_t number) const {
            const char* sender = sd_bus_message_get_sender(signal);
            return number != 0 && number == number_ && sender != nullptr && service_ == sender;
        }

        void clicked(sd_bus_message* signal) {
            std::uint32_t number = 0;
            const char* action = nullptr;
            if (!readFrom(signal, "us", &number, &action) || !isOurs(signal, number) || !pressed_)
                return;
            const auto pressed = pressed_; // which may withdraw the notification
            const std::string name = action;
            pressed(name);
        }

        void closed(sd_bus_message* signal) {
            std::uint32_t number = 0;
            if (readFrom(signal, "u", &number) && isOurs(signal, number))
                owner_.forget(*this);
        }

        DesktopNotifications& owner_;
        std::function<void(const std::string&)> pressed_;
        std::uint32_t number_ = 0; ///< 0 until the service has told it
        std::string service_;      ///< who told it, by the name that the bus gave him
        BusSlot call_, clicks_, closing_;
    };

    void busOpened() override {}
    void busLost() override { shown_.clear(); }
    void forget(const Shown& gone) {
        shown_.remove_if([&](const Shown& each) { return &each == &gone; });
    }

    /// Writes the call and gives the first failure, as the bus library numbers them.
    int write(sd_bus_message* message, const Notification& notification) const {
        BusWriter writer(message);
        writer.text(sender_.program)
            .natural(0)
            .text(sender_.icon)
            .text(notification.title)
            .text(notification.body);
        writer.open('a', "s");
        for (const NotificationAction& action : notification.actions)
            writer.text(action.id).text(action.label);
        writer.close().open('a', "{sv}");
        writeEntry(writer, "desktop-entry", sender_.identifier);
        const double shownFor = std::min(notification.seconds * millisecondsASecond, longest);
        return writer.close()
            .integer(shownFor > 0 ? static_cast<std::int32_t>(shownFor) : asLongAsUsual)
            .result();
    }

    Bus& bus_;
    NotificationSender sender_;
    std::function<void(const std::string&)> failed_;
    /// The newest one comes last. Those before it were withdrawn before the service had told their number,
    /// and are closed when it does.
    std::list<Shown> shown_;
    Subscription joined_;
};

} // namespace

std::unique_ptr<Notifications> makeDesktopNotifications(Bus& bus, NotificationSender sender,
                                                        std::function<void(const std::string&)> failed) {
    return std::make_unique<DesktopNotifications>(bus, std::move(sender), std::move(failed));
}

} // namespace kelpa
