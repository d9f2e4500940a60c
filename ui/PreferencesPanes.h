#pragma once

#include "panes/ChoiceControls.h"
#include "platform/ports/Services.h"
#include "platform/ports/Timers.h"
#include "prefs/App.h"
#include "prefs/PrefState.h"
#include "ui/PrefInterruptions.h"

#include <optional>
#include <string>

namespace kelpa {

/// The panes of the preferences window but the water reminder's. What a constructor is given must outlive the
/// pane.

/// The General pane. What its switches set in motion is the settings' own affair.
class PrefGeneralView final : public Pane {
  public:
    PrefGeneralView(PrefState& state, ShownPreferences& window);
};

/// The Workflow pane: the lengths of work periods and breaks, the long break, when the cycle stops by itself,
/// and what comes before a break or in its way. It takes only numbers that the cycle can run with.
class PrefBreakView final : public Pane {
  public:
    /// A service that is missing leaves its rows out.
    PrefBreakView(PrefState& state, ShownPreferences& window, Queue& mainQueue, const Services& services);

    void show() override;

  private:
    void addShortBreak(Queue& mainQueue);
    void addLongBreak(Queue& mainQueue);
    void addOther();
    void addHistory();
    void addSwitch(const char* id, std::string label, Setting<bool>& setting);
    void enableText();

    PrefState& state_;
    ShownPreferences& window_;
    std::optional<PrefHoldView> hold_;
    Subscription customTold_;
};

/// The chosen style, whichever style object is in place.
class ChosenStyle final : public Setting<std::int64_t> {
  public:
    explicit ChosenStyle(PrefState& state) : state_(state) {}

    [[nodiscard]] std::int64_t operator()() const override;
    void set(const std::int64_t& style) override;
    Subscription observe(Told told) override;

  private:
    PrefState& state_;
};

/// The Style pane: the tone of the prompts, and the two lists of the chosen tone to edit.
class PrefStyleView final : public Pane {
  public:
    static constexpr const char* styleId = "breakStyle";
    static constexpr const char* listId = "promptList";       ///< which list is edited
    static constexpr const char* promptsId = "promptEntries"; ///< that list

    PrefStyleView(PrefState& state, ShownPreferences& window);

  private:
    ChosenStyle style_;
    TransientSetting<std::int64_t> list_{0};
};

/// The About pane: what the program says of itself. Without a picture it shows its glyph of the icon font.
class PrefAboutView final : public Pane {
  public:
    PrefAboutView(App& app, ShownPreferences& window);

    /// Tells the copyright line again: a year may have ended since it was told.
    void show() override;

    /// What is said anywhere, without the glyph. Version and build are written as in "v1.2.0(34)".
    [[nodiscard]] static AboutContent content(const AboutApp& about);

  private:
    App& app_;
    ShownPreferences& window_;
};

} // namespace kelpa
