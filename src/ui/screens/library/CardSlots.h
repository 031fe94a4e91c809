// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"
#include "ui/screens/library/SlotModel.h"

#include <QRectF>

namespace quelto {

/// A card as QML shows it.
struct CardSlot {
    QRectF area;
    QString path;
    /// Units: bytes.
    qint64 byteCount = 0;
    QDateTime date;
    int version = 0;
    QString title;
    QString game;
    QString time;
    QString size;
    QString tier;
    QVariant score;
    QString label;
    qreal ratio = 1;
};

/// The cards in view.
///
/// Thread: main.
class CardSlots : public SlotModel<CardSlot> {
    Q_OBJECT

public:
    enum Role {
        /// Counted through all cards; -1 while the row shows nothing.
        PositionRole = Qt::UserRole,
        AreaRole,
        PathRole,
        /// Changes when the file at the path has changed, and not when the row shows another one.
        VersionRole,
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

    using SlotModel::SlotModel;

    void show(qsizetype first, qsizetype end, const CardAt& cardAt);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace quelto
