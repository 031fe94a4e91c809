// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quelto::test {

/// A temporary folder of clips that the ffmpeg command line generates.
class GeneratedClips {
public:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// Runs ffmpeg with the arguments, separated by spaces, and the file name as output.
    /// Errors: std::runtime_error with ffmpeg's error output.
    QString make(const QString& name, const QString& arguments) const;

    /// A small grey clip of increasing brightness: its luma is 16 + rise × seconds.
    QString brightening(const QString& name, double seconds, double rise, const QString& encoding) const;
    /// One second with a red left half, a blue right half and a lighter upper half.
    QString quadrants(const QString& name) const;

    QString write(const QString& name, const QByteArray& bytes) const;
    static QByteArray read(const QString& path);

private:
    QTemporaryDir m_folder;
};

} // namespace quelto::test
