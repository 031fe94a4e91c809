// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/ClipLibrary.h"

#include <QAbstractListModel>

namespace quelto {

/// The games of the library with their clip counts, in the library's order.
///
/// Thread: main.
class GameList : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { NameRole = Qt::UserRole, CountRole, IsOtherRole };

    explicit GameList(const ClipLibrary& library, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    friend class StableRows;

    void update(const QList<GameCount>& games);

    QList<GameCount> m_games;
};

} // namespace quelto
