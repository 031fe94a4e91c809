// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QScreen;

namespace quelto {

/// Tells when displays come, go or change their size or role.
///
/// Thread: main.
class DisplayWatch : public QObject {
    Q_OBJECT

public:
    explicit DisplayWatch(QObject* parent = nullptr);

Q_SIGNALS:
    void changed();

private:
    void follow(QScreen* screen);
};

} // namespace quelto
