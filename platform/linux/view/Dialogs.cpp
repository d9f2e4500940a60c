#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/view/ManagedWindow.h"

#include <QtMath>

namespace kelpa::view {

namespace {

/// As large as what it says, and no larger.
class Dialog : public ManagedWindow {
  public:
    Dialog(Stage& stage, QQmlEngine& engine, const QString& file) : ManagedWindow(stage, engine, file) {
        setFlags(Qt::Dialog);
        closeBy(QStringLiteral("Esc"));
    }

  protected:
    [[nodiscard]] QSize firstSize() const override {
        return {qCeil(content().implicitWidth()), qCeil(content().implicitHeight())};
    }
    /// Leaves a person no other size than that.
    void fixSize() {
        const QSize size = around(firstSize());
        setMinimumSize(size);
        setMaximumSize(size);
    }
};

class AboutWindow final : public Dialog {
  public:
    AboutWindow(Stage& stage, QQmlEngine& engine) : Dialog(stage, engine, QStringLiteral("About.qml")) {}

    void appear() override {
        // Only what was drawn once knows its size.
        if (!isVisible()) {
            resize(around(firstSize()));
            grabWindow();
        }
        fixSize();
        ManagedWindow::appear();
    }
};

/// What the days were like, in a window of any size.
class HistoryWindow final : public ManagedWindow {
  public:
    HistoryWindow(Stage& stage, QQmlEngine& engine)
        : ManagedWindow(stage, engine, QStringLiteral("History.qml")) {
        setFlags(Qt::Window);
        setMinimumSize(around({520, 380}));
    }

  protected:
    [[nodiscard]] QSize firstSize() const override { return {760, 620}; }
    bool event(QEvent* event) override {
        if (event->type() == QEvent::FocusIn)
            say(wire::view::action, wire::view::cameToFrontAction);
        return ManagedWindow::event(event);
    }
};

/// The window of updates. Nobody may have asked for it, so it leaves the keyboard where it is unless the
/// program says otherwise.
class UpdateWindow final : public Dialog {
  public:
    UpdateWindow(Stage& stage, QQmlEngine& engine) : Dialog(stage, engine, QStringLiteral("Update.qml")) {
        // The toolkit tells the window manager so.
        setProperty("_q_showWithoutActivating", true);
        connect(&content(), &QQuickItem::implicitHeightChanged, this, &UpdateWindow::fit);
    }

    void appear() override {
        fit();
        if (!isVisible())
            ManagedWindow::appear();
    }

  private:
    void fit() {
        fixSize();
        resize(around(firstSize()));
    }
};

} // namespace

std::unique_ptr<ViewWindow> makeAboutWindow(Stage& stage, QQmlEngine& engine) {
    return std::make_unique<AboutWindow>(stage, engine);
}

std::unique_ptr<ViewWindow> makeHistoryWindow(Stage& stage, QQmlEngine& engine) {
    return std::make_unique<HistoryWindow>(stage, engine);
}

std::unique_ptr<ViewWindow> makeUpdateWindow(Stage& stage, QQmlEngine& engine) {
    return std::make_unique<UpdateWindow>(stage, engine);
}

} // namespace kelpa::view
