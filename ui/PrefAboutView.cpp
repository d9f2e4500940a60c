#include "ui/PrefAboutView.h"

#include "base/Localized.h"
#include "base/Text.h"
#include "ui/IconFont.h"

namespace kelpa {

PrefAboutView::PrefAboutView(App& app, PreferencesWindow& window)
    : Pane(localized("About"), "info.circle"), app_(app), window_(window) {
    const AboutApp about = app.about();
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

void PrefAboutView::show() {
    window_.setCopyright(app_.about().copyright);
}

std::string PrefAboutView::versionLine(const AboutApp& about) {
    return withArguments(localized("v%1$s(%2$s)"), {about.version, about.build});
}

} // namespace kelpa
