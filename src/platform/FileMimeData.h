// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QMimeData>
#include <QString>

#include <memory>

namespace quelto {

/// The file's address for other programs. Brackets are escaped, which QUrl leaves as they are: strict readers refuse
/// them in a path.
QByteArray fileUri(const QString& path);

/// A file as other programs take it from a clipboard or a drag: as a URI, and in the forms by which file managers know
/// that it is to be copied and not moved.
///
/// Not as text: a chat that is offered both might send the name instead of the file.
std::unique_ptr<QMimeData> fileMimeData(const QString& path);

} // namespace quelto
