#pragma once

#include "platform/linux/view/ThemeColors.h"

#include <QDBusMessage>
#include <QObject>
#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

namespace kelpa::x11 {
class SettingsWatch;
}

namespace kelpa::view {

/// Whether the desktop is set to light or dark: as the settings portal says, else as the colours do that the
/// desktop gives its programs. Follows a change of the portal's word and of the desktop's theme.
/// `KELPA_APPEARANCE` set to `light` or `dark` in the environment settles it.
class Appearance : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY darkChanged FINAL)

  public:
    explicit Appearance(QObject* parent = nullptr);
    ~Appearance() override;
    [[nodiscard]] bool dark() const { return dark_; }
    /// Whether nobody is being asked any more who may see that differently.
    [[nodiscard]] bool settled() const { return settled_; }
    /// What the desktop gives its programs to be drawn with, read anew; none where that is dark and this is
    /// not, or the other way round.
    [[nodiscard]] ThemeColors colors() const;

  signals:
    void darkChanged();

  private slots:
    void settingChanged(const QDBusMessage& signal);

  private:
    void askPortal();
    void portalAnswered(QDBusPendingCallWatcher* call);
    void setScheme(QVariant scheme);
    void decide();

    std::unique_ptr<x11::SettingsWatch> settings_; ///< null where the environment has settled it
    std::optional<bool> stated_;                   ///< what the portal said, if it said anything
    bool dark_ = false;
    bool settled_ = true;
};

} // namespace kelpa::view
