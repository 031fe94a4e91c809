// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QMimeData>
#include <QString>

#include <memory>

namespace quelto {

/// The file's URI for other programs. Escapes square brackets, which QUrl does not: strict parsers reject them in a
/// path.
QByteArray fileUri(const QString& path);

/// A file for the clipboard or a drag: a URI list, and the formats that tell file managers to copy rather than move.
///
/// Has no text format: a chat program might send the name instead of the file.
std::unique_ptr<QMimeData> fileMimeData(const QString& path);

} // namespace quelto
