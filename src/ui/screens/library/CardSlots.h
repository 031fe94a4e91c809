// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"
#include "ui/screens/library/SlotWindow.h"

#include <QAbstractListModel>
#include <QRectF>

namespace quelto {

/// The cards in view as a model of a few rows that never come and go while the user scrolls: a row is given the next
/// clip instead, so that the item that draws it is used again.
///
/// Thread: main.
class CardSlots : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        /// Counted through all cards; -1 while the row shows nothing.
        PositionRole = Qt::UserRole,
        AreaRole,
        PathRole,
        TitleRole,
        GameRole,
        TimeRole,
        SizeRole,
        TierRole,
        ScoreRole,
        LabelRole,
        RatioRole,
    };

    struct Card {
        Clip clip;
        QRectF area;
        qreal ratio = 1;
    };
    using CardAt = std::function<Card(qsizetype position)>;

    using QAbstractListModel::QAbstractListModel;

    /// Makes room for that many, never less than before.
    void reserve(qsizetype slotCount);
    void show(qsizetype first, qsizetype end, const CardAt& cardAt);
    /// What was shown is not what it was: the next show asks for all of it again.
    void forget();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Slot {
        QRectF area;
        QString path;
        QString title;
        QString game;
        QString time;
        QString size;
        QString tier;
        QVariant score;
        QString label;
        qreal ratio = 1;
    };

    static Slot filled(const Card& card);

    SlotWindow m_window;
    QList<Slot> m_slots;
    bool m_isForgotten = false;
};

} // namespace quelto
