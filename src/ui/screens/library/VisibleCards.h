// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"
#include "ui/screens/library/RecyclingModel.h"

#include <QRectF>

namespace quelto {

/// The values of one card for QML.
struct VisibleCard {
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
    bool isSelected = false;
};

/// The model of the cards in the viewport.
///
/// Thread: main.
class VisibleCards : public RecyclingModel<VisibleCard> {
    Q_OBJECT

public:
    enum Role {
        /// Index among all cards; -1 while the row is unused.
        PositionRole = Qt::UserRole,
        AreaRole,
        PathRole,
        /// Changes when the file at the path changes, but not when the row switches to another file.
        VersionRole,
        TitleRole,
        GameRole,
        TimeRole,
        SizeRole,
        TierRole,
        ScoreRole,
        LabelRole,
        RatioRole,
        SelectedRole,
    };

    struct Card {
        Clip clip;
        QRectF area;
        qreal ratio = 1;
        bool isSelected = false;
    };
    using CardAt = std::function<Card(qsizetype position)>;

    using RecyclingModel::RecyclingModel;

    void show(qsizetype first, qsizetype end, const CardAt& cardAt);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace quelto
