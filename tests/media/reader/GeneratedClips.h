// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quelto::test {

/// A folder of clips that the ffmpeg command line makes.
class GeneratedClips {
public:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// The words between "ffmpeg" and the file's name, separated by blanks; what the lavfi source draws among them.
    /// Errors: std::runtime_error with ffmpeg's own text.
    QString make(const QString& name, const QString& words) const;

    /// A small grey clip that gets lighter: its luma is 16 + rise × seconds.
    QString lightening(const QString& name, double seconds, double rise, const QString& encoding) const;
    /// Left half red, right half blue, upper half lighter; one second.
    QString quarters(const QString& name) const;

    QString write(const QString& name, const QByteArray& bytes) const;
    static QByteArray read(const QString& path);

private:
    QTemporaryDir m_folder;
};

} // namespace quelto::test
