#pragma once

#include <string>

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

} // namespace kelpa
