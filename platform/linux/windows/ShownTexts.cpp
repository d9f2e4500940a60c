#include "platform/linux/windows/ShownTexts.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <algorithm>
#include <utility>

namespace kelpa {

std::vector<std::string> ShownTexts::show(const std::string& id, const std::vector<std::string>& texts) {
    std::erase_if(cuts_, [&id](const Cut& cut) { return cut.id == id; });
    std::vector<std::string> all = texts;
    for (std::string& text : all) {
        if (text.size() <= wire::view::longestText)
            continue;
        std::string beginning = shortened(text, wire::view::longestText);
        while (std::find(all.begin(), all.end(), beginning) != all.end())
            beginning += "…";
        cuts_.push_back({id, beginning, std::exchange(text, beginning)});
    }
    return all;
}

std::string ShownTexts::whole(const std::string& id, const std::string& shown) const {
    const auto found = std::find_if(cuts_.begin(), cuts_.end(),
                                    [&](const Cut& cut) { return cut.id == id && cut.shown == shown; });
    return found == cuts_.end() ? shown : found->whole;
}

} // namespace kelpa
