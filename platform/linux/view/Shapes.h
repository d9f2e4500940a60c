#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>
#include <limits>
#include <memory>

class QSvgRenderer;

namespace kelpa::view {

/// A rectangle with round corners, painted straight onto the window, so that it is smooth at every scale
/// factor. The toolkit's own is put together from pictures of corners, which shows at fractional ones.
class RoundedBox : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed FINAL)
    Q_PROPERTY(QColor borderColor MEMBER borderColor_ NOTIFY changed FINAL)
    Q_PROPERTY(qreal borderWidth MEMBER borderWidth_ NOTIFY changed FINAL)
    /// Cut down to half the shorter side, which is what it is where nobody sets it.
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY changed FINAL)
    QML_ELEMENT

  public:
    explicit RoundedBox(QQuickItem* parent = nullptr);

  signals:
    void changed();

  protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

  private:
    QColor color_ = Qt::transparent;
    QColor borderColor_ = Qt::transparent;
    qreal borderWidth_ = 0;
    qreal radius_ = std::numeric_limits<qreal>::infinity();
};

/// One of the program's symbols in one colour, sharp at every size and scale factor.
class Symbol : public QQuickItem {
    Q_OBJECT
    /// As the drawing is called; empty for none.
    Q_PROPERTY(QString name MEMBER name_ NOTIFY changed FINAL)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed FINAL)
    /// Of both its sides.
    Q_PROPERTY(qreal side READ implicitWidth WRITE setSide FINAL)
    QML_ELEMENT

  public:
    explicit Symbol(QQuickItem* parent = nullptr);
    void setSide(qreal side) { setImplicitSize(side, side); }

  signals:
    void changed();

  protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

  private:
    void load();

    QString name_;
    QColor color_;
    std::shared_ptr<QSvgRenderer> drawing_; ///< null until it is painted
};

} // namespace kelpa::view
