#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/windows/RemoteWindowSystem.h"
#include "tests/linux/Support.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace kelpa::test {

/// Screens, focus and log as plain values.
class FakeDesktop final : public FocusMemory, public WindowReport {
  public:
    FakeDesktop() { screens.update({{"A", {0, 0, 800, 600}, true}, {"B", {800, 0, 640, 480}, false}}); }
    void remember() override { events.emplace_back("remember"); }
    void giveBack() override { events.emplace_back("give back"); }
    void info(const std::string& text) override { events.push_back(text); }
    void warning(const std::string& text) override { events.push_back(text); }

    Screens screens;
    std::vector<std::string> events;
};

class Client final : public BreakScreenClient {
  public:
    void skipPressed() override { ++skips; }
    void noticeTapped() override { ++notices; }
    int skips = 0;
    int notices = 0;
};

/// A window system with a stand-in for the view, which writes down what it is told.
class RemoteWindows : public testing::Test {
  protected:
    RemoteWindows() {
        std::filesystem::remove(log_);
        setenv("FAKE_VIEW_LOG", log_.c_str(), 1);
        open();
    }
    ~RemoteWindows() override { std::filesystem::remove(log_); }

    void open(const std::string& program = KELPA_FAKE_VIEW, double idleSeconds = 60) {
        windows_ = std::make_unique<RemoteWindowSystem>(
            WindowSystemParts{loop_, desktop_.screens, desktop_, desktop_, idleSeconds}, program);
    }
    void make(const Screen& screen) {
        window_ = windows_->makeWindow(
            {std::to_string(screen.number), screen.frame, 25, WindowStyle::FullSizeContent, screen.number});
        face_ = window_->hostBreakScreen(client_);
    }
    void appear() const {
        window_->setAlpha(0);
        window_->fadeTo(1, 2, nullptr);
        window_->orderFrontRegardless();
    }
    [[nodiscard]] std::vector<std::string> receivedSince(const std::string& text) const {
        const auto lines = received();
        const auto last = std::find(lines.rbegin(), lines.rend(), text);
        return {last.base(), lines.end()};
    }
    /// Runs the loop until `condition` holds; false when it does not within some seconds.
    bool runUntil(const std::function<bool()>& condition) { return spinUntil(loop_, condition); }
    [[nodiscard]] std::vector<std::string> received() const {
        std::vector<std::string> lines;
        std::ifstream file(log_);
        for (std::string text; std::getline(file, text);)
            lines.push_back(text);
        return lines;
    }
    bool receives(const std::string& text, std::ptrdiff_t times = 1) {
        return runUntil([&] {
            const auto lines = received();
            return std::count(lines.begin(), lines.end(), text) >= times;
        });
    }

    std::string log_ = testing::TempDir() + "fake-view-" + std::to_string(getpid());
    EventLoop loop_;
    FakeDesktop desktop_;
    Client client_;
    std::unique_ptr<RemoteWindowSystem> windows_;
    std::unique_ptr<NativeWindow> window_;
    std::unique_ptr<BreakScreenFace> face_;
};

/// The same with a break window on the first screen.
class RemoteBreak : public RemoteWindows {
  protected:
    RemoteBreak() { make(desktop_.screens.all()[0]); }
};

} // namespace kelpa::test
