#pragma once

#include <QImage>
#include <QWidget>
#include <xcb/xcb.h>

namespace kelpa {

/// What the tray shows: the picture and, where the tray grants the room, the text beside it; otherwise the
/// text is in the tooltip.
class TrayIcon : public QWidget {
    Q_OBJECT

  public:
    TrayIcon();

    /// `mask` says by its opacity where the picture is; its colour is not used.
    void setPicture(const QImage& mask);
    void setTitle(const QString& title);
    /// A sentence for the tooltip; empty for none.
    void setHint(const QString& hint);
    /// In which colour icons are seen on a tray that shines through; no colour where it does not tell.
    void setInk(const QColor& ink);
    /// Makes the window that the tray is asked to take in, as large as it is best; `translucent` where the
    /// tray offers windows that can be seen through. There is none yet, or it was dropped.
    xcb_window_t makeWindow(bool translucent);
    /// The tray is gone, or another one.
    void dropWindow();
    /// The tray has taken the window in.
    void embedded();
    /// Looks anew at what the tray shows where the window is.
    void lookBehind();

  signals:
    void pressed(const QRect& icon);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    [[nodiscard]] QFont titleFont() const;
    [[nodiscard]] int titleWidth() const;
    [[nodiscard]] int wantedWidth() const;
    [[nodiscard]] bool titleFits() const;
    [[nodiscard]] QRect titleBox() const;
    [[nodiscard]] QColor ink() const;
    [[nodiscard]] QImage tinted(int side) const;
    void adapt();
    void describe();

    bool translucent_ = false;
    bool docked_ = false; ///< the tray decides on the size from then on
    QImage picture_;
    QString title_;
    QString hint_;
    QColor ink_;
    QImage behind_; ///< what the tray shows where we are; null where that is seen anyway
};

} // namespace kelpa
