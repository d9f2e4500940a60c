#pragma once

#include "platform/linux/view/ManagedWindow.h"

namespace kelpa::view {

/// The about panel: as large as what it says, and no larger.
class AboutWindow : public ManagedWindow {
    Q_OBJECT

  public:
    explicit AboutWindow(QQmlEngine& engine);

    void setContentProperty(const QByteArray& name, const QString& value) override;
    void appear() override;

  protected:
    [[nodiscard]] QSize firstSize() const override;
};

} // namespace kelpa::view
