#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace kelpa::view {

/// What a control offers or lists. Taking a new list changes only the lines that differ, so that a view of it
/// keeps its place and the line that is being edited.
class EntryList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(QStringList texts READ texts NOTIFY textsChanged FINAL)
    QML_ELEMENT
    QML_UNCREATABLE("a control has one")

  public:
    struct Entry {
        qint64 value = 0;
        QString text;
        QString removal; ///< names the button that removes it, where it has one
        bool operator==(const Entry&) const = default;
    };
    enum Role { ValueRole = Qt::UserRole, TextRole, RemovalRole };

    using QAbstractListModel::QAbstractListModel;
    void setEntries(const QList<Entry>& entries);

    [[nodiscard]] QStringList texts() const;
    /// 0 where there is no such line.
    Q_INVOKABLE [[nodiscard]] qint64 valueAt(int row) const { return entries_.value(row).value; }
    /// -1 when none has it.
    Q_INVOKABLE [[nodiscard]] int indexOf(const QVariant& value) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(entries_.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override {
        return {{ValueRole, "value"}, {TextRole, "text"}, {RemovalRole, "removal"}};
    }

  signals:
    void textsChanged();

  private:
    void remove(int first, int count);
    void insert(int first, const QList<Entry>& entries);

    QList<Entry> entries_;
};

} // namespace kelpa::view
