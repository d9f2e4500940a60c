// Whatever a panel asks of the menu over the bus is answered, and nothing is chosen that cannot be.
#include "platform/linux/tray/DBusMenu.h"
#include "tests/fuzz/BusInput.h"
#include "tests/linux/PrivateBus.h"

namespace {

using namespace kelpa;
using namespace kelpa::fuzz;

struct Clicks final : MenuClicks {
    void didClick(int id) override {
        if (id != 1)
            __builtin_trap();
    }
};

/// The menu of a program, and a panel on the same bus.
class Desktop {
  public:
    Desktop() {
        model_.lines.resize(3);
        model_.lines[0].id = 1;
        model_.lines[0].title = "Settings";
        model_.lines[1].id = 2;
        model_.lines[1].separator = true;
        model_.lines[2].id = 3;
        model_.lines[2].enabled = false;
        menu_.emplace(loop_, bus_, data_, model_, clicks_, activation_);
    }
    BusMessage call(const char* member) {
        const char* program = nullptr;
        sd_bus_get_unique_name(bus_.handle(), &program);
        sd_bus_message* message = nullptr;
        if (sd_bus_message_new_method_call(panel_.bus(), &message, program, DBusMenu::path,
                                           "com.canonical.dbusmenu", member) < 0)
            __builtin_trap();
        return BusMessage(message);
    }
    /// Waits for the answer, which may be a refusal. A message that the bus does not take is none.
    void ask(const BusMessage& message) {
        answered_ = false;
        sd_bus_slot* slot = nullptr;
        if (sd_bus_call_async(panel_.bus(), &slot, message.get(), answered, this, 0) < 0)
            return;
        const BusSlot owned(slot);
        if (!test::spinUntil(loop_, [this] { return answered_; }))
            __builtin_trap();
    }

  private:
    static int answered(sd_bus_message*, void* self, sd_bus_error*) {
        static_cast<Desktop*>(self)->answered_ = true;
        return 0;
    }
    test::PrivateBus daemon_;
    EventLoop loop_;
    test::OpenBus bus_{loop_};
    test::Peer panel_{loop_};
    const std::string data_ = "/nonexistent";
    StatusItemModel model_;
    Clicks clicks_;
    // Nobody clicks on the item itself.
    ItemActivation activation_{loop_, {[] { return false; }, [] {}, [] {}}};
    std::optional<DBusMenu> menu_;
    bool answered_ = false;
};

struct Method {
    const char* name;
    std::string_view signature;
};
constexpr std::array<Method, 7> methods{{{"GetLayout", "iias"},
                                         {"GetGroupProperties", "aias"},
                                         {"GetProperty", "is"},
                                         {"Event", "isvu"},
                                         {"EventGroup", "a(isvu)"},
                                         {"AboutToShow", "i"},
                                         {"AboutToShowGroup", "ai"}}};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Desktop desktop;
    Bytes bytes(data, size);
    const Method& method = methods[bytes.next() % methods.size()];
    // Some calls bring what the method does not take.
    const Method& other =
        methods[bytes.next() % 8 == 0 ? bytes.next() % methods.size() : &method - methods.data()];
    const BusMessage message = desktop.call(method.name);
    append(message.get(), other.signature, bytes);
    desktop.ask(message);
    return 0;
}
