// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QSet>

#include <functional>

namespace quelto {

/// Changes the rows of a list model by moving and updating them instead of a reset, so that the keyboard focus and the
/// scroll position stay. A friend of the models that use it.
///
/// Thread: main.
class StableRows {
public:
    /// Makes the model's rows equal to `wanted`. `Key` is the member that identifies a row.
    template <auto Key, typename Model, typename Row>
    static void update(Model& model, QList<Row>& rows, const QList<Row>& wanted)
    {
        if (rows.isEmpty() || wanted.isEmpty()) {
            model.beginResetModel();
            rows = wanted;
            model.endResetModel();
            return;
        }
        removeAllBut<Key>(model, rows, wanted);
        for (int row = 0; row < wanted.size(); ++row) {
            place<Key>(model, rows, wanted.at(row), row);
            if (rows.at(row) != wanted.at(row)) {
                rows[row] = wanted.at(row);
                Q_EMIT model.dataChanged(model.index(row), model.index(row));
            }
        }
    }

private:
    template <auto Key, typename Model, typename Row>
    static void removeAllBut(Model& model, QList<Row>& rows, const QList<Row>& kept)
    {
        QSet<std::remove_cvref_t<decltype(std::invoke(Key, kept.first()))>> keys;
        std::ranges::transform(kept, std::inserter(keys, keys.end()), Key);
        for (auto row = static_cast<int>(rows.size()) - 1; row >= 0; --row) {
            if (!keys.contains(std::invoke(Key, rows.at(row)))) {
                model.beginRemoveRows({}, row, row);
                rows.removeAt(row);
                model.endRemoveRows();
            }
        }
    }

    /// Moves or inserts a row. The rows before it are in place.
    template <auto Key, typename Model, typename Row>
    static void place(Model& model, QList<Row>& rows, const Row& wanted, int row)
    {
        const auto found = std::ranges::find(rows.cbegin() + row, rows.cend(), std::invoke(Key, wanted), Key);
        const auto present = static_cast<int>(found - rows.cbegin());
        if (found == rows.cend()) {
            model.beginInsertRows({}, row, row);
            rows.insert(row, wanted);
            model.endInsertRows();
        } else if (present != row) {
            model.beginMoveRows({}, present, present, {}, row);
            rows.move(present, row);
            model.endMoveRows();
        }
    }
};

} // namespace quelto
