#pragma once

#include <string>
#include <vector>

namespace kelpa {

/// Texts of controls as far as a window shows them, and which whole ones those stand for: what a person does
/// to the beginning of a text is done to all of it.
class ShownTexts {
  public:
    /// Gives what is shown of the texts of a control, in order. Of long ones it is the beginning, and never
    /// twice the same for different texts.
    std::vector<std::string> show(const std::string& id, const std::vector<std::string>& texts);
    /// The whole text of which a control shows this.
    [[nodiscard]] std::string whole(const std::string& id, const std::string& shown) const;

  private:
    struct Cut {
        std::string id;
        std::string shown;
        std::string whole;
    };
    std::vector<Cut> cuts_; ///< hardly ever any
};

} // namespace kelpa
