#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelpa {

/// The fixed texts of the break screen, ready to show.
struct BreakScreenTexts {
    std::string newFeature;    ///< introduces the notice
    std::string waterReminder; ///< the notice's link
    std::string hint;          ///< below the link
    std::string skip;          ///< on the button
    std::string linkSymbol;    ///< a symbol's name; it stands behind the link
};

/// What a person does on the break screen; the core implements it.
class BreakScreenClient {
  public:
    virtual ~BreakScreenClient() = default;
    virtual void skipPressed() = 0;
    virtual void noticeTapped() = 0;
};

/// The drawn break screen inside one window. It shows what it was told last.
class BreakScreenFace {
  public:
    virtual ~BreakScreenFace() = default;
    virtual void setTexts(const BreakScreenTexts& texts) = 0;
    virtual void setPrompt(const std::string& prompt) = 0; ///< may hold line feeds
    /// Once a second; takes no memory but what the toolkit's own text needs.
    virtual void setCount(const std::string& count) = 0;
    virtual void setSkipOffered(bool offered) = 0;
};

/// The fixed texts of the water panel, ready to show.
struct WaterPanelTexts {
    std::string finished; ///< caption of the first figure
    std::string percent;  ///< caption of the second
    std::string remain;   ///< caption of the third
    std::string wellDone; ///< in the place of the third once the target is met
    std::string skip;
    std::string done;
    std::string close; ///< says what the window's close button does, to those who cannot see it
    std::string cup;   ///< the name of the symbol that rides on the bar
};

/// An amount that the panel offers.
struct WaterAmount {
    std::int64_t millilitres = 0;
    std::string text;
};

/// The day's progress, ready to show.
struct WaterProgress {
    std::string finished;
    std::string percent;
    std::string remain;  ///< empty once the target is met
    double fraction = 0; ///< of the bar that is filled, from 0 to 1
};

/// The line of the next drink, ready to show.
struct WaterCounting {
    std::string tip;
    std::string remaining; ///< empty when the drink is due or nothing is counted; the tip then stands out
};

/// What a person does in the water panel; the core implements it.
class WaterPanelClient {
  public:
    virtual ~WaterPanelClient() = default;
    virtual void amountTapped(std::int64_t millilitres) = 0;
    virtual void skipPressed() = 0;
    virtual void donePressed() = 0;
    /// The window's own close button, or Escape: the panel goes without an answer.
    virtual void closePressed() = 0;
};

/// The drawn water panel inside one window. It shows what it was told last and animates the way there.
class WaterPanelFace {
  public:
    virtual ~WaterPanelFace() = default;
    virtual void setTexts(const WaterPanelTexts& texts, const std::vector<WaterAmount>& amounts) = 0;
    virtual void setProgress(const WaterProgress& progress) = 0;
    virtual void setCounting(const WaterCounting& counting) = 0; ///< once a second
    virtual void setSelectedAmount(std::int64_t millilitres) = 0;
    /// Offers Skip and Done for one answer: once one of them was pressed, both do nothing until they are
    /// offered again. The face sees to that itself, because a second click may come before the core has heard
    /// of the first.
    virtual void offerAnswers() = 0;
};

} // namespace kelpa
