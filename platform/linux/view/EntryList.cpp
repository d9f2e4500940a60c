#include "platform/linux/view/EntryList.h"

#include <algorithm>

namespace kelpa::view {

/// A person changes one line at a time, so what differs lies between a common start and a common end.
void EntryList::setEntries(const QList<Entry>& entries) {
    const auto differing =
        std::mismatch(entries_.cbegin(), entries_.cend(), entries.cbegin(), entries.cend());
    const int start = static_cast<int>(differing.second - entries.cbegin());
    const auto alike = std::mismatch(entries_.crbegin(), entries_.crend() - start, entries.crbegin(),
                                     entries.crend() - start);
    const int end = static_cast<int>(alike.second - entries.crbegin());
    const int before = static_cast<int>(entries_.size()) - start - end;
    const int after = static_cast<int>(entries.size()) - start - end;
    const int changed = std::min(before, after);
    std::copy_n(entries.begin() + start, changed, entries_.begin() + start);
    if (changed > 0)
        emit dataChanged(index(start), index(start + changed - 1));
    remove(start + changed, before - changed);
    insert(start + changed, entries.mid(start + changed, after - changed));
    emit textsChanged();
}

void EntryList::remove(int first, int count) {
    if (count <= 0)
        return;
    beginRemoveRows({}, first, first + count - 1);
    entries_.remove(first, count);
    endRemoveRows();
}

void EntryList::insert(int first, const QList<Entry>& entries) {
    if (entries.isEmpty())
        return;
    beginInsertRows({}, first, first + static_cast<int>(entries.size()) - 1);
    entries_ = entries_.first(first) + entries + entries_.sliced(first);
    endInsertRows();
}

int EntryList::indexOf(const QVariant& value) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&value](const Entry& entry) {
        return value.isValid() && entry.value == value.toLongLong();
    });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

QStringList EntryList::texts() const {
    QStringList texts;
    for (const Entry& entry : entries_)
        texts.append(entry.text);
    return texts;
}

QVariant EntryList::data(const QModelIndex& index, int role) const {
    const Entry entry = entries_.value(index.row());
    if (role == ValueRole)
        return entry.value;
    if (role == RemovalRole)
        return entry.removal;
    return role == TextRole || role == Qt::DisplayRole ? entry.text : QVariant();
}

} // namespace kelpa::view
