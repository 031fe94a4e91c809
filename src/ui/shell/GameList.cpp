// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/GameList.h"

#include <QSet>

namespace quelto {

GameList::GameList(const ClipLibrary& library, QObject* parent)
    : QAbstractListModel(parent)
    , m_games(library.games())
{
    connect(&library, &ClipLibrary::clipsChanged, this, [this, &library] { update(library.games()); });
}

int GameList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_games.size());
}

QVariant GameList::data(const QModelIndex& index, int role) const
{
    const auto& game = m_games.at(index.row());
    switch (role) {
    case NameRole:
        return game.name;
    case CountRole:
        return game.count;
    case IsOtherRole:
        return game.isOther;
    default:
        return {};
    }
}

QHash<int, QByteArray> GameList::roleNames() const
{
    return {{NameRole, "name"}, {CountRole, "count"}, {IsOtherRole, "isOther"}};
}

void GameList::update(const QList<GameCount>& games)
{
    if (m_games.isEmpty() || games.isEmpty()) {
        beginResetModel();
        m_games = games;
        endResetModel();
        return;
    }
    QSet<QString> names;
    std::ranges::transform(games, std::inserter(names, names.end()), &GameCount::name);
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (!names.contains(m_games.at(row).name)) {
            beginRemoveRows({}, row, row);
            m_games.removeAt(row);
            endRemoveRows();
        }
    }
    for (int row = 0; row < games.size(); ++row) {
        const auto& game = games.at(row);
        const auto found = std::find_if(m_games.cbegin() + row, m_games.cend(),
                                        [&](const GameCount& each) { return each.name == game.name; });
        const auto present = static_cast<int>(found - m_games.cbegin());
        if (found == m_games.cend()) {
            beginInsertRows({}, row, row);
            m_games.insert(row, game);
            endInsertRows();
        } else if (present != row) {
            beginMoveRows({}, present, present, {}, row);
            m_games.move(present, row);
            endMoveRows();
        }
        if (m_games.at(row) != game) {
            m_games[row] = game;
            Q_EMIT dataChanged(index(row), index(row), {CountRole, IsOtherRole});
        }
    }
}

} // namespace quelto
