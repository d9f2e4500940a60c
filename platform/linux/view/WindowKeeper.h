#pragma once

#include "platform/linux/view/Channel.h"
#include "platform/linux/view/Stage.h"
#include "platform/linux/view/ViewWindow.h"

#include <QElapsedTimer>
#include <QQmlEngine>
#include <map>
#include <memory>

namespace kelpa::view {

/// All windows, as the program wants them, and which of them has the keyboard. What becomes of one of them,
/// it hears itself.
class WindowKeeper : public QObject {
    Q_OBJECT

  public:
    explicit WindowKeeper(Channel& channel);
    ~WindowKeeper() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using Windows = std::map<int, std::unique_ptr<ViewWindow>>;

    void obey(const wire::Message& message);
    void open(int id, const wire::Message& message);
    ViewWindow* make(int id, const std::string& kind);
    void settle();
    [[nodiscard]] std::vector<QQuickWindow*> shownWindows() const;
    void warmUp();
    [[nodiscard]] ViewWindow* guardingWindow() const;
    [[nodiscard]] ViewWindow* frontWindow() const;
    void giveKeyboard();
    void tellTaken();
    void complain(const std::string& text);

    Channel& channel_;
    QQmlEngine engine_;
    std::unique_ptr<Stage> stage_ = makeStage();
    Windows windows_;
    int front_ = 0; ///< the window that was shown last
    bool focusDue_ = false;
    QElapsedTimer inputTold_;
    bool ready_ = false;
    int taken_ = 0; ///< lines, as far as the program has been told
};

} // namespace kelpa::view
