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

public:
    struct Dependencies {
        AppSettings& settings;
        FileManager& files;
        FolderDialog& dialog;
    };

    explicit SaveFolder(QObject* parent = nullptr);
    explicit SaveFolder(Dependencies dependencies, QObject* parent = nullptr);

    Q_INVOKABLE void open() const;
    /// The dialog is in front of the item's window.
    Q_INVOKABLE void chooseFolder(const QQuickItem* item) const;

private:
    Dependencies m_dependencies;
};

} // namespace quelto
