#pragma once

#include "platform/linux/view/ControlState.h"
#include "platform/linux/view/ManagedWindow.h"

#include <QHash>
#include <QVariant>

namespace kelpa::view {

/// The preferences window. Its layout comes once and makes the controls, whose values come and go one by one.
class PreferencesWindow : public ManagedWindow {
    Q_OBJECT

  public:
    PreferencesWindow(Stage& stage, QQmlEngine& engine);

    void setContentProperty(const QByteArray& name, const QString& value) override;
    void tellControl(const wire::Message& message) override;

  protected:
    [[nodiscard]] QSize firstSize() const override { return {720, 710}; }
    bool event(QEvent* event) override;

  private:
    void layOut(const QVariantMap& layout);
    void makeControls(const QVariantMap& layout);
    void makeControl(const QString& id, QVariantMap& controls);

    QHash<QString, ControlState*> states_;
};

} // namespace kelpa::view
