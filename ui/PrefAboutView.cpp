#include "ui/PrefAboutView.h"

#include "base/Localized.h"
#include "base/Text.h"
#include "ui/IconFont.h"

namespace kelpa {

PrefAboutView::PrefAboutView(const AboutApp& about) : Pane(localized("About"), "info.circle") {
    AboutContent content;
    if (about.icon) {
        content.icon = *about.icon;
    } else {
        content.glyph = IconFont::kelpa.rawValue();
        content.glyphFont = IconFont::name();
    }
    content.name = about.name;
    content.version = versionLine(about);
    content.copyright = about.copyright;
    content.link = localized("Release Notes");
    content.linkAddress = about.releaseNotesLink;
    setAbout(std::move(content));
}

std::string PrefAboutView::versionLine(const AboutApp& about) {
    return withArguments(localized("v%1$s(%2$s)"), {about.version, about.build});
}

} // namespace kelpa
