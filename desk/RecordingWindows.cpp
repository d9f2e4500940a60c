#include "desk/RecordingWindows.h"

#include "base/Text.h"

#include <algorithm>
#include <cmath>

namespace kelpa::desk {

namespace {

constexpr double screenWidth = 1920;
constexpr double screenHeight = 1080;

std::string whole(double points) {
    return std::to_string(std::llround(points));
}

} // namespace

RecordingWindows::RecordingWindows(Journal& journal, VirtualTime& time) : journal_(journal), time_(time) {
    setScreens({1});
}

void RecordingWindows::setScreens(const std::vector<std::uint32_t>& numbers) {
    std::vector<Screen> screens;
    double x = 0;
    for (const std::uint32_t number : numbers) {
        screens.push_back({number, {x, 0, screenWidth, screenHeight}});
        x += screenWidth;
    }
    arrange(std::move(screens));
}

void RecordingWindows::arrange(std::vector<Screen> screens) {
    screens_ = std::move(screens);
    if (client_)
        client_->screensChanged();
}

const Screen* RecordingWindows::mainScreen() const {
    return screens_.empty() ? nullptr : &screens_.front();
}

std::unique_ptr<NativeWindow> RecordingWindows::makeWindow(const WindowSpec& spec) {
    const Rect& frame = spec.frame;
    journal_.note("window", "made " + spec.title + " " + whole(frame.x) + "," + whole(frame.y) + " " +
                                whole(frame.width) + "x" + whole(frame.height) +
                                " level=" + std::to_string(spec.level));
    auto window = std::make_unique<RecordingWindow>(journal_, time_, spec);
    windows_.push_back(window.get());
    return window;
}

const RecordedBreakScreen* RecordingWindows::breakScreen(std::uint32_t screen) const {
    for (const RecordingWindow* window : windows_)
        if (window->spec().screen == screen && window->breakScreen() && window->visible())
            return window->breakScreen();
    return nullptr;
}

bool RecordingWindows::skip(std::uint32_t screen) {
    const RecordedBreakScreen* shown = breakScreen(screen);
    const bool offered = shown && shown->skipOffered;
    if (offered)
        shown->client.skipPressed();
    return offered;
}

bool RecordingWindows::notice(std::uint32_t screen) {
    const RecordedBreakScreen* shown = breakScreen(screen);
    if (shown)
        shown->client.noticeTapped();
    return shown;
}

const RecordedWaterPanel* RecordingWindows::waterPanel() const {
    for (const RecordingWindow* window : windows_)
        if (window->waterPanel() && window->visible())
            return window->waterPanel();
    return nullptr;
}

bool RecordingWindows::answerWater(void (WaterPanelClient::*press)()) {
    const RecordedWaterPanel* panel = waterPanel();
    if (panel)
        (panel->client.*press)();
    return panel;
}

bool RecordingWindows::waterAmount(std::int64_t millilitres) {
    const RecordedWaterPanel* panel = waterPanel();
    const auto offers = [&](const WaterAmount& amount) { return amount.millilitres == millilitres; };
    if (!panel || std::none_of(panel->amounts.begin(), panel->amounts.end(), offers))
        return false;
    panel->client.amountTapped(millilitres);
    return true;
}

RecordingWindow::RecordingWindow(Journal& journal, VirtualTime& time, WindowSpec spec)
    : journal_(journal), time_(time), spec_(std::move(spec)) {}

std::unique_ptr<BreakScreenFace> RecordingWindow::hostBreakScreen(BreakScreenClient& client) {
    auto face = std::make_unique<RecordedBreakScreen>(client);
    breakScreen_ = face.get();
    return face;
}

std::unique_ptr<WaterPanelFace> RecordingWindow::hostWaterPanel(WaterPanelClient& client) {
    auto face = std::make_unique<RecordedWaterPanel>(client, journal_);
    waterPanel_ = face.get();
    return face;
}

void RecordingWindow::setAlpha(double alpha) {
    journal_.aside("window", "alpha " + spec_.title + " " + decimalText(alpha));
}

void RecordingWindow::fadeTo(double alpha, double seconds, std::function<void()> done) {
    journal_.aside("window",
                   "fade " + spec_.title + " " + decimalText(alpha) + " in " + decimalText(seconds));
    if (alpha <= 0)
        journal_.note("window", "closing " + spec_.title);
    if (done)
        time_.asyncAfter(seconds, std::make_shared<WorkItem>(std::move(done)));
}

void RecordingWindow::orderFrontRegardless() {
    visible_ = true;
    journal_.note("window", "show " + spec_.title);
}

void RecordingWindow::setFrame(const Rect& frame, std::uint32_t screen) {
    spec_.frame = frame;
    spec_.screen = screen;
    journal_.aside("window", "frame " + spec_.title + " " + whole(frame.x) + "," + whole(frame.y) + " on " +
                                 std::to_string(screen));
}

void RecordingWindow::close() {
    visible_ = false;
    journal_.note("window", "closed " + spec_.title);
}

} // namespace kelpa::desk
