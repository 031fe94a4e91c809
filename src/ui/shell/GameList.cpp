// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/GameList.h"

#include "ui/shared/StableRows.h"

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
    StableRows::update<&GameCount::name>(*this, m_games, games);
}

} // namespace quelto
