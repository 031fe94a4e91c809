// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace quelto {

// Linux allows any bytes in a file name. Qt replaces those that are not valid UTF-8, after which the file cannot be
// found again. These functions keep such a byte as a code unit that no valid text contains, an unpaired surrogate
// U+DC80 to U+DCFF. They take names and whole paths.

/// The text of a name that the file system returned.
QString decodeFileName(QByteArrayView name);
/// The name to pass to the file system. Reverses decodeFileName.
QByteArray encodeFileName(const QString& name);
/// The name as users see it: with U+FFFD for each byte that is not text.
QString displayFileName(QString name);

} // namespace quelto
