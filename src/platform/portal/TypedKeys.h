// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <cstdint>

namespace quelto {

/// What keys type in the present layout, as far as they were pressed in a window of this program. Wayland tells the
/// layout only to the window that has the focus, and Qt passes on only what each press made of it.
///
/// Thread: main. Requires QGuiApplication.
class TypedKeys final : public QObject {
    Q_OBJECT

public:
    TypedKeys();

    /// What the key types without modifiers. Empty if it types nothing that can be shown, or was never pressed.
    QString characters(std::uint32_t keyCode) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// By stored key code.
    QHash<std::uint32_t, QString> m_characters;
};

} // namespace quelto
