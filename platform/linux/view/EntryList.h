#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace kelpa::view {

/// What a control offers or lists. Taking a new list changes only the lines that differ, so that a view of it
/// keeps its place and the line that is being edited.
class EntryList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)
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

    [[nodiscard]] int count() const { return static_cast<int>(entries_.size()); }
    /// 0, or empty, where there is no such line.
    Q_INVOKABLE [[nodiscard]] qint64 valueAt(int row) const { return entries_.value(row).value; }
    Q_INVOKABLE [[nodiscard]] QString textAt(int row) const { return entries_.value(row).text; }
    /// -1 when none has it.
    Q_INVOKABLE [[nodiscard]] int indexOf(const QVariant& value) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();

  private:
    void remove(int first, int count);
    void insert(int first, const QList<Entry>& entries);

    QList<Entry> entries_;
};

} // namespace kelpa::view
