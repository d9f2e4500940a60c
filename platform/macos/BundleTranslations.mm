#import "platform/macos/BundleTranslations.h"

#import "platform/macos/Bridge.h"

namespace kelpa {

std::string BundleTranslations::lookUp(const std::string& key) const {
    // Without a table of that name, and without an entry in it, the bundle gives the key back.
    return toString([[NSBundle mainBundle] localizedStringForKey:toNSString(key) value:nil table:nil]);
}

} // namespace kelpa
