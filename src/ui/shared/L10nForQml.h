// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Translates user texts in QML.
class L10nForQml : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(L10n)
    QML_SINGLETON

public:
    /// Same as `T` in C++. Numbers among the arguments are formatted without digit grouping.
    Q_INVOKABLE static QString T(const QString& key, const QVariantList& arguments = {});
    /// Same as `TOnDesktop` in C++.
    Q_INVOKABLE static QString TOnDesktop(const QString& key, const QVariantList& arguments = {});
    /// Same as `isolated` in C++: a text with a name, for drawing.
    Q_INVOKABLE static QString isolated(const QString& text);
};

} // namespace quelto
