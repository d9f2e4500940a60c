#pragma once

#include "platform/linux/view/ManagedWindow.h"

namespace kelpa::view {

/// The window of updates: as large as what it says. Nobody may have asked for it, so it leaves the keyboard
/// where it is unless the program says otherwise.
class UpdateWindow : public ManagedWindow {
    Q_OBJECT

  public:
    explicit UpdateWindow(QQmlEngine& engine);

    void appear() override;

  protected:
    [[nodiscard]] QSize firstSize() const override;

  private slots:
    void fit();
};

} // namespace kelpa::view
