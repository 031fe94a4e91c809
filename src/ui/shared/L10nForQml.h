// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The lookup of user texts for QML.
class L10nForQml : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(L10n)
    QML_SINGLETON

public:
    /// The same as T in C++; numbers among the arguments appear without grouping.
    Q_INVOKABLE static QString T(const QString& key, const QVariantList& arguments = {});
    /// The same as TOnDesktop in C++.
    Q_INVOKABLE static QString TOnDesktop(const QString& key, const QVariantList& arguments = {});
};

} // namespace quelto
