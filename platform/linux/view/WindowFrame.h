#pragma once

#include <QSize>
#include <memory>

class QQmlEngine;
class QQuickItem;
class QQuickWindow;

namespace kelpa::view {

/// A window's own title bar and edges. Sizes are in the toolkit's units.
class WindowFrame {
  public:
    /// Null where the desktop draws them, which all do but some Wayland compositors.
    static std::unique_ptr<WindowFrame> where(QQmlEngine& engine, QQuickWindow& window);
    ~WindowFrame();
    WindowFrame(const WindowFrame&) = delete;
    WindowFrame& operator=(const WindowFrame&) = delete;

    /// How large a window around content of some size is, and the other way round.
    [[nodiscard]] QSize around(const QSize& content) const;
    [[nodiscard]] QSize within(const QSize& window) const;
    /// Puts the content where it belongs in a window of that size.
    void layOut(QQuickItem& content, const QSize& window) const;

  private:
    explicit WindowFrame(std::unique_ptr<QQuickItem> item);

    int titleHeight_;
    std::unique_ptr<QQuickItem> item_; ///< goes before the window does, as the content
};

} // namespace kelpa::view
