#pragma once

#include "platform/linux/view/ManagedWindow.h"

namespace kelpa::view {

/// As large as what it says, and no larger.
class Dialog : public ManagedWindow {
    Q_OBJECT

  public:
    Dialog(Stage& stage, QQmlEngine& engine, const QString& file);

  protected:
    [[nodiscard]] QSize firstSize() const override;
    /// Leaves a person no other size than that.
    void fixSize();
};

class AboutWindow : public Dialog {
    Q_OBJECT

  public:
    AboutWindow(Stage& stage, QQmlEngine& engine) : Dialog(stage, engine, QStringLiteral("About.qml")) {}
    void appear() override;
};

/// What the days were like, in a window of any size.
class HistoryWindow : public ManagedWindow {
    Q_OBJECT

  public:
    HistoryWindow(Stage& stage, QQmlEngine& engine);

  protected:
    [[nodiscard]] QSize firstSize() const override { return {760, 620}; }
    bool event(QEvent* event) override;
};

/// The window of updates. Nobody may have asked for it, so it leaves the keyboard where it is unless the
/// program says otherwise.
class UpdateWindow : public Dialog {
    Q_OBJECT

  public:
    UpdateWindow(Stage& stage, QQmlEngine& engine);
    void appear() override;

  private:
    void fit();
};

} // namespace kelpa::view
