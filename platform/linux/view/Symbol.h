#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>
#include <memory>

class QSvgRenderer;

namespace kelpa::view {

/// One of the program's symbols in one colour, sharp at every size and scale factor.
class Symbol : public QQuickItem {
    Q_OBJECT
    /// As the drawing is called; empty for none.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed FINAL)
    QML_ELEMENT

  public:
    explicit Symbol(QQuickItem* parent = nullptr);
    ~Symbol() override;

    [[nodiscard]] const QString& name() const { return name_; }
    void setName(const QString& name);
    [[nodiscard]] const QColor& color() const { return color_; }
    void setColor(const QColor& color);

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
