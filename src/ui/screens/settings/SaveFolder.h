// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "platform/FileManager.h"
#include "platform/FolderDialog.h"

#include <QQuickItem>

namespace quelto {

/// Shows the save folder and lets the user choose another one.
///
/// Thread: main.
class SaveFolder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The folder for the user to read: bytes that are not UTF-8 are replacement characters.
    Q_PROPERTY(QString shownPath READ shownPath NOTIFY changed)

public:
    struct Dependencies {
        AppSettings& settings;
        FileManager& files;
        FolderDialog& dialog;
    };

    explicit SaveFolder(QObject* parent = nullptr);
    explicit SaveFolder(Dependencies dependencies, QObject* parent = nullptr);

    QString shownPath() const;

    Q_INVOKABLE void open() const;
    /// The dialog is in front of the item's window.
    Q_INVOKABLE void chooseFolder(const QQuickItem* item) const;

Q_SIGNALS:
    void changed();

private:
    Dependencies m_dependencies;
};

} // namespace quelto
