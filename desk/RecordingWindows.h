#pragma once

#include "desk/Journal.h"
#include "platform/ports/WindowSystem.h"

#include <map>
#include <string>
#include <vector>

namespace kelpa::desk {

class RecordingWindow;
struct RecordedBreakScreen;
struct RecordedWaterPanel;

/// Screens and windows that exist only in the journal. Screens of 1920 × 1080 points stand side by side.
class RecordingWindows final : public WindowSystem {
  public:
    RecordingWindows(Journal& journal, VirtualTime& time);

    void setScreens(const std::vector<std::uint32_t>& numbers);
    /// Screens that stand anyhow.
    void arrange(std::vector<Screen> screens);
    void dragPanel(const Rect& frame) { client_->panelDragged(frame); }
    /// A press on Skip, a tap on the notice; false where that screen does not offer it.
    bool skip(std::uint32_t screen);
    bool notice(std::uint32_t screen);
    /// Answers in the water panel; false where none is shown or it does not offer the amount.
    bool answerWater(void (WaterPanelClient::*press)());
    bool waterAmount(std::int64_t millilitres);
    /// What the water panel shows; null where none is shown.
    [[nodiscard]] const RecordedWaterPanel* waterPanel() const;
    /// What the break screen of a screen shows; null where none is shown.
    [[nodiscard]] const RecordedBreakScreen* breakScreen(std::uint32_t screen) const;

    void setClient(WindowSystemClient& client) override { client_ = &client; }
    [[nodiscard]] std::vector<Screen> screens() const override { return screens_; }
    [[nodiscard]] const Screen* mainScreen() const override;
    std::unique_ptr<NativeWindow> makeWindow(const WindowSpec& spec) override;
    void prepare() override { journal_.aside("window", "prepare"); }
    void activate() override { journal_.note("app", "activate"); }
    void deactivate() override { journal_.note("app", "deactivate"); }

  private:
    Journal& journal_;
    VirtualTime& time_;
    WindowSystemClient* client_ = nullptr;
    std::vector<Screen> screens_;
    std::vector<RecordingWindow*> windows_; ///< they belong to the core and live as long as it does
};

/// A break screen that remembers what it was told.
struct RecordedBreakScreen final : BreakScreenFace {
    explicit RecordedBreakScreen(BreakScreenClient& whose) : client(whose) {}
    void setTexts(const BreakScreenTexts& told) override { texts = told; }
    void setPrompt(const std::string& told) override { prompt = told; }
    void setCount(const std::string& told) override { count = told; }
    void setSkipOffered(bool offered) override { skipOffered = offered; }

    BreakScreenClient& client;
    BreakScreenTexts texts;
    std::string prompt;
    std::string count;
    bool skipOffered = false;
};

/// A water panel that remembers what it was told.
struct RecordedWaterPanel final : WaterPanelFace {
    RecordedWaterPanel(WaterPanelClient& whose, Journal& theJournal) : client(whose), journal(theJournal) {}
    void setTexts(const WaterPanelTexts& told, const std::vector<WaterAmount>& offered) override {
        texts = told;
        amounts = offered;
    }
    void setProgress(const WaterProgress& told) override { progress = told; }
    void setCounting(const WaterCounting& told) override {
        if (told.tip != counting.tip)
            journal.note("water", "tip " + inQuotes(told.tip));
        counting = told;
    }
    void setSelectedAmount(std::int64_t millilitres) override { selected = millilitres; }
    void offerAnswers() override { ++offers; }

    WaterPanelClient& client;
    Journal& journal;
    WaterPanelTexts texts;
    std::vector<WaterAmount> amounts;
    WaterProgress progress;
    WaterCounting counting;
    std::int64_t selected = 0;
    int offers = 0; ///< how often answers were offered; the desk presses as it is told all the same
};

class RecordingWindow final : public NativeWindow {
  public:
    RecordingWindow(Journal& journal, VirtualTime& time, WindowSpec spec);

    [[nodiscard]] const WindowSpec& spec() const { return spec_; }
    [[nodiscard]] const RecordedBreakScreen* breakScreen() const { return breakScreen_; }
    [[nodiscard]] const RecordedWaterPanel* waterPanel() const { return waterPanel_; }

    std::unique_ptr<BreakScreenFace> hostBreakScreen(BreakScreenClient& client) override;
    std::unique_ptr<WaterPanelFace> hostWaterPanel(WaterPanelClient& client) override;
    void setAlpha(double alpha) override;
    void fadeTo(double alpha, double seconds, std::function<void()> done) override;
    void orderFrontRegardless() override;
    void close() override;
    void setFrame(const Rect& frame, std::uint32_t screen) override;
    [[nodiscard]] bool visible() const override { return visible_; }

  private:
    Journal& journal_;
    VirtualTime& time_;
    WindowSpec spec_;
    bool visible_ = false;
    // What fills the window belongs to the core and goes before the window does.
    RecordedBreakScreen* breakScreen_ = nullptr;
    RecordedWaterPanel* waterPanel_ = nullptr;
};

} // namespace kelpa::desk
